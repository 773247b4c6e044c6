#include "desk/check/finding.h"

#include "desk/host/log.h"
#include "desk/host/utf8.h"

namespace desk::check {

namespace {

constexpr std::size_t kLongestBytes = 60;

}  // namespace

const char* nameOf(Severity severity) {
  switch (severity) {
    case Severity::Note:
      return "note";
    case Severity::Warning:
      return "warning";
    case Severity::Error:
      break;
  }
  return "error";
}

std::string describe(const Element& element) {
  if (element.bar == 0) return "the header";
  std::string text = "bar " + std::to_string(element.bar);
  if (element.piece != 0) text = "piece " + std::to_string(element.piece) + " of " + text;
  if (element.work != 0) text = "work " + std::to_string(element.work) + " of " + text;
  return text;
}

std::string quoted(const std::string& value) {
  std::string text = deskhost::visible(value);
  if (text.size() > kLongestBytes) {
    std::size_t end = 0;
    for (std::size_t next = 0; next <= kLongestBytes;) {
      end = next;
      next += deskhost::utf8CharacterSize(text, next);
    }
    text = text.substr(0, end) + "…";
  }
  return "\"" + text + "\"";
}

}  // namespace desk::check
