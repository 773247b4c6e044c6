// JSON values as the JSON reader takes them, and as messages name them.
#pragma once

#include <json/value.h>

#include <string>

#include "model/key_table.h"

namespace desk::check {

/// The member of that name, also when it is null; null when there is none, no name, or no object.
const Json::Value* member(const Json::Value& object, const char* name);

/// Whether the reader takes the value for a key of that kind.
bool isOfKind(const Json::Value& value, model::KeyKind kind);

/// Whether the value is a text with a zero byte in it.
bool holdsZeroByte(const Json::Value& value);

/// "a text", "an integer", ...
const char* wordFor(model::KeyKind kind);

/// "the text \"7\"", "the number 3.5", "null", "an array", ...
std::string describe(const Json::Value& value);

/// Stores a value of the key's kind as the reader does.
template <class Record>
void store(const Json::Value& value, const model::Key<Record>& key, Record& record) {
  using model::KeyKind;
  switch (key.kind) {
    case KeyKind::Text:
      record.*key.field.text = value.asString();
      break;
    case KeyKind::IntegerText:
      record.*key.field.text = std::to_string(value.asInt());
      break;
    case KeyKind::Integer:
      record.*key.field.number = value.asInt();
      break;
    case KeyKind::Number:
      record.*key.field.number = value.asDouble();
      break;
    case KeyKind::Flag:
      record.*key.field.flag = value.asBool();
      break;
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
}

}  // namespace desk::check
