#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <memory>
#include <sstream>

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

/// Takes the first fault from the library's list: "* Line 3, Column 5\n  reason.\n".
DocumentFault firstFault(const std::string& errors) {
  DocumentFault fault;
  std::istringstream list(errors);
  std::string word;
  char comma = '\0';
  list >> word >> word >> fault.line >> comma >> word >> fault.column >> std::ws;
  if (!list || !std::getline(list, fault.reason)) return {0, 0, errors};
  fault.isBehind = fault.reason.find("Extra non-whitespace") == 0;
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
      fault = firstFault(errors);
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
