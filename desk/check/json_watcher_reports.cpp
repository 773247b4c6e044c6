// The sentences of the JSON watcher.
#include "desk/base/text.h"
#include "desk/check/json_values.h"
#include "desk/check/json_watcher.h"
#include "desk/job/rules.h"
#include "json/json_reading.h"

namespace desk::check {

using json_keys::kVersionKey;

Place JsonWatcher::placeOf(const Json::Value& value) const {
  return {file(), source().position(text_->placeOf(value.getOffsetStart()))};
}

Place JsonWatcher::placeOfKey(const Json::Value& value) const {
  return {file(), source().position(text_->keyOf(value.getOffsetStart()))};
}

void JsonWatcher::reportVersion(const Json::Value& root, int code) {
  const std::string answer =
      code == 0 ? "with bars the panel would answer -4"
                : "the panel answers " + std::to_string(code) + " and the job is empty";
  if (!root.isObject()) {
    report(rules::kVersion, Severity::Error, placeOf(root),
           "the document is " + describe(root) + ", not an object: " + answer);
    return;
  }
  const char* key = kVersionKey.spelling;
  const Json::Value* declared = member(root, key);
  if (declared == nullptr) declared = member(root, key = kVersionKey.secondSpelling);
  if (code != json_reading::kNoHeader) {
    report(
        rules::kVersion, Severity::Error, placeOfKey(*declared),
        "\"Version\" is " + quoted(reader_.data.Version) + " and wins over \"version\": " + answer,
        kVersionKey.spelling);
  } else if (declared == nullptr) {
    report(rules::kVersion, Severity::Error, placeOf(root),
           "the job declares no \"Version\": \"1.0\": " + answer, kVersionKey.spelling);
  } else {
    report(rules::kVersion, Severity::Error, placeOfKey(*declared),
           "\"" + std::string(key) + "\" is " + describe(*declared) +
               ", not the text \"1.0\": " + answer,
           key);
  }
}

void JsonWatcher::reportWrongType(const Json::Value& value, const std::string& key,
                                  const char* wanted, Level level) {
  const bool clears = value.isNull() && !leadsOn(key);
  const Severity severity = clears ? Severity::Note : severityOf(level, key);
  report(rules::kWrongType, severity, placeOfKey(value),
         "\"" + key + "\" must be " + wanted + ", not " + describe(value) + ": it is ignored" +
             (clears ? " and clears nothing" : ""),
         key)
      .loses = key;
}

void JsonWatcher::reportShadowed(const Json::Value& value, const Json::Value& winner,
                                 const std::string& key, const std::string& winningKey,
                                 Level level) {
  // A "version" of "1.0" opens the door for another "Version", which is a finding of its own.
  if (level == Level::Header && key == kVersionKey.secondSpelling &&
      value == Json::Value(json_keys::kVersion) && winner != value) {
    return;
  }
  const bool same = value == winner;
  report(rules::kShadowedKey, same ? Severity::Note : severityOf(level, winningKey),
         placeOfKey(value),
         "\"" + key + "\" is ignored because \"" + winningKey + "\" is there too" +
             (same ? ", with the same value" : ""),
         key);
}

void JsonWatcher::reportStrangers(const Json::Value& object, Level level) {
  if (!object.isObject()) return;
  for (const auto& [name, value] : membersAt(level).strangers()) {
    const std::string key(name);
    const Advice& advice = adviceFor(key, level);
    report(rules::kUnknownKey, advice.severity, placeOfKey(*value),
           quoted(key) + " is no key of " + nameOf(level) + " and is ignored" + advice.text, key)
        .loses = advice.meant;
  }
  for (const LostKey& lost : text_->lostKeysOf(object.getOffsetStart())) {
    const Place later{file(), source().position(lost.laterOffset)};
    report(rules::kDuplicateKey, severityOf(level, lost.key),
           {file(), source().position(lost.offset)},
           quoted(lost.key) + " is ignored because it is there again (" + placeText(later) + ")",
           lost.key);
  }
}

void JsonWatcher::reportZeroByte(const Json::Value& value, const char* key, Level level) {
  if (!holdsZeroByte(value)) return;
  report(rules::kZeroByte, severityOf(level, key), placeOfKey(value),
         "\"" + std::string(key) + "\" is " + quoted(value.asString()) + ": scripts get at most " +
             quoted(value.asCString()) + " of it",
         key);
}

void JsonWatcher::reportNoObject(const Json::Value& value, Level level) {
  if (value.isObject()) return;
  report(rules::kNotAnObject, Severity::Error, placeOf(value),
         describe(here()) + " is " + describe(value) + ", not an object: it becomes " +
             nameOf(level) + " without a value of its own");
}

}  // namespace desk::check
