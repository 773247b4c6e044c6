#include "desk/check/json_value_text.h"
#include "desk/base/text.h"

#include <cstring>

#include "desk/base/numbers.h"
#include "desk/check/finding.h"

namespace desk::check {

using model::KeyKind;

const Json::Value* member(const Json::Value& object, const char* name) {
  if (name == nullptr || !object.isObject()) return nullptr;
  return object.find(name, name + std::strlen(name));
}

bool holdsZeroByte(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  return value.isString() && value.getString(&begin, &end) &&
         std::memchr(begin, 0, static_cast<std::size_t>(end - begin)) != nullptr;
}

const char* wordFor(KeyKind kind) {
  switch (kind) {
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      return "an integer of 32 bits";
    case KeyKind::Number:
      return "a number";
    case KeyKind::Flag:
      return "true or false";
    case KeyKind::Text:
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return "a text";
}

std::string describe(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::booleanValue:
      return value.asBool() ? "true" : "false";
    case Json::intValue:
    case Json::uintValue:
      return "the number " + value.asString();
    case Json::realValue:
      return "the number " + shortestText(value.asDouble());
    case Json::stringValue:
      return "the text " + quoted(value.asString());
    case Json::arrayValue:
      return "an array";
    case Json::objectValue:
      break;
  }
  return "an object";
}

}  // namespace desk::check
