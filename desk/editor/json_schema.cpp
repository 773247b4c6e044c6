#include <json/value.h>

#include <cstdint>
#include <limits>

#include "desk/base/numbers.h"
#include "desk/editor/editor_files.h"
#include "desk/editor/job_levels.h"
#include "json/json_keys.h"

namespace desk::editor {

namespace {

using model::KeyKind;

Json::Value integerType() {
  Json::Value type;
  type["type"] = "integer";
  type["minimum"] = std::numeric_limits<std::int32_t>::min();
  type["maximum"] = std::numeric_limits<std::int32_t>::max();
  return type;
}

Json::Value typeOf(const WrittenKey& key) {
  Json::Value type;
  switch (key.kind) {
    case KeyKind::Flag:
      type["type"] = "boolean";
      break;
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      type = integerType();
      break;
    case KeyKind::Number:
      type["type"] = "number";
      break;
    case KeyKind::Text:
    case KeyKind::Required:
    case KeyKind::Ignored:
      type["type"] = "string";
      if (key.form == model::TextForm::Count) type["pattern"] = "^[0-9]+$";
      if (key.form == model::TextForm::Measure) type["pattern"] = "^-?[0-9]+(\\.[0-9]+)?$";
      break;
  }
  type["description"] = key.description();
  return type;
}

/// An object with the keys of a level and no others. Nearly all are required: the readers keep the
/// value before for a key that is missing.
Json::Value objectOf(const Level& level) {
  Json::Value object;
  object["type"] = "object";
  object["description"] = level.description;
  object["additionalProperties"] = false;
  for (const WrittenKey& key : level.keys) {
    object["properties"][key.name] = typeOf(key);
    if (key.isRequired) object["required"].append(key.name);
  }
  return object;
}

/// A key that may be missing: without it there are no elements, not those of somebody else.
Json::Value arrayOf(const char* definition, const char* description) {
  Json::Value array;
  array["type"] = "array";
  array["description"] = description;
  array["items"]["$ref"] = std::string("#/definitions/") + definition;
  return array;
}

}  // namespace

std::string jsonSchema() {
  const JobLevels levels = jsonLevels();
  Json::Value root = objectOf(levels.header);
  root["$schema"] = "http://json-schema.org/draft-07/schema#";
  root["title"] = "Cutting job";
  root["properties"]["Version"]["const"] = json_keys::kVersion;
  root["properties"][json_keys::kBars] = arrayOf("bar", "The bars, in the order of cutting.");

  Json::Value& definitions = root["definitions"];
  definitions["bar"] = objectOf(levels.bar);
  definitions["bar"]["properties"][json_keys::kPieces] =
      arrayOf("piece", "The pieces of the bar, in the order of cutting.");
  Json::Value& piece = definitions["piece"] = objectOf(levels.piece);
  piece["properties"][json_keys::kCutOfPiece]["$ref"] = "#/definitions/cut";
  piece["required"].append(json_keys::kCutOfPiece);
  piece["properties"][json_keys::kWorks] = arrayOf("work", "The works on the piece.");
  definitions["cut"] = objectOf(levels.cut);
  definitions["work"] = objectOf(levels.work);
  return jsonDocument(root);
}

}  // namespace desk::editor
