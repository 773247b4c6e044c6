// JSON values as the keys of a job take them.
#pragma once

#include <json/value.h>

#include <string>

#include "model/key_table.h"

namespace json_keys {

using model::Key;
using model::KeyKind;

/// Whether a value counts for a key of that kind.
inline bool isOfKind(const Json::Value& value, KeyKind kind) {
  switch (kind) {
    case KeyKind::Text:
      return value.isString();
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      return value.isInt();
    case KeyKind::Number:
      return value.isDouble();
    case KeyKind::Flag:
      return value.isBool();
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return false;
}

/// Stores a value of the key's kind in its field.
template <class Record>
void store(const Json::Value& value, const Key<Record>& key, Record& record) {
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

}  // namespace json_keys
