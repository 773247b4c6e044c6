#include <json/value.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "desk/base/json_document.h"
#include "desk/editor/editor_files.h"
#include "desk/editor/job_levels.h"
#include "json/json_keys.h"

namespace desk::editor {

namespace {

using model::KeyKind;

Json::Value numberType(const char* name, model::TextForm form) {
  const model::Range range = model::rangeOf(form);
  Json::Value type;
  type["type"] = name;
  if (std::isfinite(range.least)) {
    type[range.isOpen ? "exclusiveMinimum" : "minimum"] = static_cast<int>(range.least);
  }
  if (std::isfinite(range.most)) {
    type[range.isOpen ? "exclusiveMaximum" : "maximum"] = static_cast<int>(range.most);
  }
  return type;
}

/// The reader takes integers of 32 bits only.
Json::Value integerType(model::TextForm form) {
  using Limits = std::numeric_limits<std::int32_t>;
  Json::Value type = numberType("integer", form);
  if (!std::isfinite(model::rangeOf(form).least)) type["minimum"] = Limits::min();
  if (!std::isfinite(model::rangeOf(form).most)) type["maximum"] = Limits::max();
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
      type = integerType(key.form);
      break;
    case KeyKind::Number:
      type = numberType("number", key.form);
      break;
    case KeyKind::Text:
    case KeyKind::Required:
    case KeyKind::Ignored:
      type["type"] = "string";
      if (key.form != model::TextForm::Any) {
        const bool mayBeEmpty = key.form == model::TextForm::Unit;  // nobody reads it
        type["pattern"] = "^(" + patternOf(key.form) + (mayBeEmpty ? ")?$" : ")$");
      }
      break;
  }
  type["description"] = key.description();
  return type;
}

Json::Value referenceTo(const std::string& level) {
  Json::Value reference;
  reference["$ref"] = "#/definitions/" + level;
  return reference;
}

Json::Value childrenOf(const Children& children) {
  if (!children.isArray) return referenceTo(children.level);
  Json::Value array;
  array["type"] = "array";
  array["description"] = children.text;
  array["items"] = referenceTo(children.level);
  return array;
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
  for (const Children& children : level.children) {
    object["properties"][children.key] = childrenOf(children);
    if (!children.isArray) object["required"].append(children.key);
  }
  return object;
}

}  // namespace

std::string jsonSchema() {
  const JobLevels levels = jsonLevels();
  Json::Value root = objectOf(levels[0]);
  root["$schema"] = "http://json-schema.org/draft-07/schema#";
  root["title"] = "Cutting job";
  root["properties"][json_keys::kVersionKey.spelling]["const"] = json_keys::kVersion;
  for (std::size_t i = 1; i < levels.size(); ++i) {
    root["definitions"][levels[i].name] = objectOf(levels[i]);
  }
  return jsonDocument(root);
}

}  // namespace desk::editor
