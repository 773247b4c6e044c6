#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string_view>

#include "desk/host/documents.h"
#include "desk/host/settings.h"
#include "host/cbl.h"

namespace deskhost {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

std::unique_ptr<Json::CharReader> makeReader() {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["failIfExtra"] = true;
  builder["rejectDupKeys"] = false;
  builder["skipBom"] = false;
  builder["stackLimit"] = settings().maxJsonDepth;
  return std::unique_ptr<Json::CharReader>(builder.newCharReader());
}

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// The offset of a place as the library tells it: a carriage return alone ends a line too, and a
/// column counts bytes. The text's size for what is no place in it.
std::size_t offsetOf(std::string_view text, int line, int column) {
  std::size_t start = 0;
  for (; line > 1; --line) {
    const std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) return text.size();
    start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return std::min(start + static_cast<std::size_t>(std::max(column, 1)) - 1, text.size());
}

/// Takes the first fault from the library's list: "* Line 3, Column 5\n  reason.\n".
DocumentFault firstFault(const std::string& errors, std::string_view text) {
  int line = 0;
  int column = 0;
  std::string reason;
  std::istringstream list(errors);
  std::string word;
  char comma = '\0';
  list >> word >> word >> line >> comma >> word >> column >> std::ws;
  if (!list || !std::getline(list, reason)) return {0, 0, errors};
  DocumentFault fault = faultAt(text, offsetOf(text, line, column), reason);
  fault.isBehind = reason.find("Extra non-whitespace") == 0;
  return fault;
}

/// The library takes a zero byte for the end of the text, and what follows would go unseen.
bool endsWithValue(const char* begin, const char* end, const Json::Value& root) {
  const char* const limit = begin + root.getOffsetLimit();
  const char* const zero = std::find(limit, end, '\0');
  return zero == end || zero + 1 == end;
}

}  // namespace

bool parseJson(const std::string& text, Json::Value& root, DocumentFault& fault) {
  const bool marked = text.compare(0, 3, kByteOrderMark) == 0;
  const char* const begin = text.data() + (marked ? 3 : 0);
  const char* const end = text.data() + text.size();
  if (std::all_of(begin, end, isBlank)) {
    fault = {0, 0, kEmptyDocument};
    return false;
  }
  std::string errors;
  try {
    if (!makeReader()->parse(begin, end, &root, &errors)) {
      fault = firstFault(errors, {begin, static_cast<std::size_t>(end - begin)});
    } else if (!endsWithValue(begin, end, root)) {
      fault = {0, 0, "there are bytes after a zero byte", false, true};
    } else {
      return checkElements(root, {begin, static_cast<std::size_t>(end - begin)}, fault);
    }
  } catch (const Json::Exception& error) {
    // The library throws the same for a lack of memory.
    const std::string cause = error.what();
    const bool tooDeep = cause.find("stackLimit") != std::string::npos;
    const std::string depth = std::to_string(settings().maxJsonDepth);
    fault = {0, 0, tooDeep ? "nested deeper than " + depth + " levels" : cause, tooDeep};
  }
  return false;
}

}  // namespace deskhost

namespace cbl {

int loadJsonFile(const std::string& path, Json::Value& root, bool) {
  return deskhost::loadDocument(path,
                                [&](const std::string& text, deskhost::DocumentFault& fault) {
                                  return deskhost::parseJson(text, root, fault);
                                })
             ? 0
             : -1;
}

}  // namespace cbl
