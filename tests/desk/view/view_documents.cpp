// view_documents FILE [DOCUMENT[?NAME=VALUE&...]]...: what a page gets for a job: whether it loads
// and why not, then each answer with its status, one JSON array a line.
#include <json/value.h>

#include <iostream>
#include <sstream>

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/host/documents.h"
#include "desk/view/job_view.h"

namespace {

desk::view::Query queryOf(const std::string& text) {
  desk::view::Query query;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, '&');) {
    const std::size_t sign = part.find('=');
    query[part.substr(0, sign)] = part.substr(sign + 1);
  }
  return query;
}

void write(const Json::Value& line) {
  std::cout << desk::compactJson(line) << "\n";
}

}  // namespace

int main(int count, char** arguments) {
  std::string bytes;
  std::string reason;
  if (count < 2 || !deskhost::readDocumentFile(arguments[1], bytes, reason)) return 2;
  desk::view::JobView view(arguments[1], bytes);
  Json::Value state;
  state.append(view.loads());
  state.append(view.reason());
  state.append(view.reasonAt().line);
  state.append(view.reasonAt().column);
  write(state);
  for (int i = 2; i < count; ++i) {
    const std::string question = arguments[i];
    const std::size_t mark = question.find('?');
    const bool isBare = mark == std::string::npos;
    const auto answer =
        view.answer(question.substr(0, mark), queryOf(isBare ? "" : question.substr(mark + 1)));
    Json::Value line;
    line.append(answer.status);
    line.append(desk::isUtf8(answer.body) ? answer.body : "not UTF-8");
    write(line);
  }
}
