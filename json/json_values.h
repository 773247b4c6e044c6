// JSON values as the keys of a job take them: which value counts for a key, and what is stored.
//
// A value of another kind is as good as absent, so that a text "7" where an integer belongs leaves
// the field as it is. Nothing is converted but integers, which are kept as text or as double.
#pragma once

#include <json/value.h>

#include <string>

#include "model/key_table.h"

namespace json_keys {

using model::Key;
using model::KeyKind;

/// Whether a value counts for a key of that kind. Integers are told by their value and must fit 32
/// bits: 7, 7.0 and 1e3 are integers, 2147483648 is none. An integer counts as a number too.
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

/// Stores a value in the field of its key. `isOfKind` must have held: the library throws where it
/// cannot convert. A text keeps its zero bytes. Keys that are not stored (Required, Ignored) have
/// no field in a JSON job and change nothing.
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
