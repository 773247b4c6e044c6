// What the shadow of the JSON reader tells.
#include <algorithm>

#include "desk/check/json_shadow.h"
#include "desk/check/json_values.h"
#include "desk/check/rules.h"

namespace desk::check {

Place JsonShadow::placeOf(const Json::Value& value) const {
  return {file(), source().position(text_->placeOf(value.getOffsetStart()))};
}

Place JsonShadow::placeOfKey(const Json::Value& value) const {
  return {file(), source().position(text_->keyOf(value.getOffsetStart()))};
}

bool JsonShadow::declaresVersion(const Json::Value& root) {
  const Json::Value version1(json_keys::kVersion);
  const Json::Value* first = member(root, "Version");
  const Json::Value* second = member(root, "version");
  return (first != nullptr && *first == version1) || (second != nullptr && *second == version1);
}

void JsonShadow::reportVersion(const Json::Value& root, int code) {
  const std::string answer =
      code == 0 ? "with bars the panel would answer -4"
                : "the panel answers " + std::to_string(code) + " and the job is empty";
  if (!root.isObject()) {
    report(rules::kVersion, Severity::Error, placeOf(root),
           "the document is " + describe(root) + ", not an object: " + answer, {});
    return;
  }
  const Json::Value* declared = member(root, "Version");
  const char* key = declared == nullptr ? "version" : "Version";
  if (declared == nullptr) declared = member(root, key);
  if (declaresVersion(root)) {
    report(rules::kVersion, Severity::Error, placeOfKey(*declared),
           "\"Version\" is " + quoted(state_.traced.job.Version) +
               " and wins over \"version\": " + answer,
           {}, "Version");
  } else if (declared == nullptr) {
    report(rules::kVersion, Severity::Error, placeOf(root),
           "the job declares no \"Version\": \"1.0\": " + answer, {}, "Version");
  } else {
    report(rules::kVersion, Severity::Error, placeOfKey(*declared),
           "\"" + std::string(key) + "\" is " + describe(*declared) +
               ", not the text \"1.0\": " + answer,
           {}, key);
  }
}

const Json::Value* JsonShadow::structure(const Json::Value& object, const char* key,
                                         Json::ValueType type, Level level, const Element& here) {
  const Json::Value* value = member(object, key);
  if (value == nullptr || value->type() == type) return value;
  reportWrongType(*value, key, type == Json::arrayValue ? "an array" : "an object", level, here);
  return nullptr;
}

void JsonShadow::reportWrongType(const Json::Value& value, const std::string& key,
                                 const char* wanted, Level level, const Element& here) {
  const Severity severity = value.isNull() ? Severity::Note : severityOf(level, key);
  report(rules::kWrongType, severity, placeOfKey(value),
         "\"" + key + "\" must be " + wanted + ", not " + describe(value) + ": it is ignored" +
             (value.isNull() ? " and clears nothing" : ""),
         here, key);
}

void JsonShadow::reportShadowed(const Json::Value& value, const Json::Value& winner,
                                const std::string& key, const std::string& winningKey, Level level,
                                const Element& here) {
  // A "version" of "1.0" opens the door for another "Version", which is a finding of its own.
  if (level == Level::Header && key == "version" && value == Json::Value(json_keys::kVersion) &&
      winner != value) {
    return;
  }
  const bool same = value == winner;
  report(rules::kShadowedKey, same ? Severity::Note : severityOf(level, winningKey),
         placeOfKey(value),
         "\"" + key + "\" is ignored because \"" + winningKey + "\" is there too" +
             (same ? ", with the same value" : ""),
         here, key);
}

void JsonShadow::reportStrangers(const Json::Value& object, Level level, const Element& here) {
  if (!object.isObject()) return;
  const std::vector<std::string>& known = jsonNames(level);
  for (auto entry = object.begin(); entry != object.end(); ++entry) {
    const std::string key = entry.name();
    if (std::find(known.begin(), known.end(), key) != known.end()) continue;
    const Advice advice = adviceFor(key, level, false);
    report(rules::kUnknownKey, advice.severity, placeOfKey(*entry),
           quoted(key) + " is no key of " + nameOf(level) + " and is ignored" + advice.text, here,
           key);
  }
  for (const LostKey& lost : text_->lostKeysOf(object.getOffsetStart())) {
    const Place later{file(), source().position(lost.laterOffset)};
    report(rules::kDuplicateKey, severityOf(level, lost.key),
           {file(), source().position(lost.offset)},
           quoted(lost.key) + " is ignored because it is there again (" + placeText(later) + ")",
           here, lost.key);
  }
}

void JsonShadow::reportZeroByte(const Json::Value& value, const std::string& key, Level level,
                                const Element& here) {
  if (!holdsZeroByte(value)) return;
  report(rules::kZeroByte, severityOf(level, key), placeOfKey(value),
         "\"" + key + "\" is " + quoted(value.asString()) + ": scripts get " +
             quoted(value.asCString()) + " of it",
         here, key);
}

void JsonShadow::reportNoObject(const Json::Value& value, const char* what, const Element& here) {
  if (value.isObject()) return;
  report(rules::kNotAnObject, Severity::Error, placeOf(value),
         describe(here) + " is " + describe(value) + ", not an object: it becomes a " + what +
             " without a value of its own",
         here);
}

}  // namespace desk::check
