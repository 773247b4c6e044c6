// Explains what the JSON reader makes of a job.
#pragma once

#include <json/value.h>

#include <array>
#include <iterator>

#include "desk/check/json_values.h"
#include "desk/check/watcher.h"
#include "desk/job/json_positions.h"
#include "json/json_analysis.h"

namespace desk::check {

/// Watches one reader: what that carries over, this knows the origin of.
class JsonWatcher : public Watcher {
 public:
  /// @param reader a new one, which must outlive the watcher and is filled by it only
  explicit JsonWatcher(JsonAnalysis& reader)
      : Watcher(reader.data, model::JobFormat::Json), reader_(reader) {}

  /// Lets the reader read a document.
  /// @param root what the loader made of the last one of `sources`
  /// @param text that source, walked over
  /// @return the reader's result code
  int read(const Json::Value& root, const JsonPositions& text, const Sources& sources,
           Findings& findings);

  // --- what the walk tells -----------------------------------------------------------------------

  void begins(Level level, const Json::Value& element);
  template <class Record>
  void key(const Json::Value& object, const model::Key<Record>& key, const Json::Value* taken);
  void label(const Json::Value& piece, const json_keys::LabelKey& row, const Json::Value* taken);
  void labelsSkipped(const Json::Value& piece);
  void rightAngle135();
  void ends(Level level, const Json::Value& element);
  void bars(const Json::Value& root, const Json::Value* taken);
  void leads(Level level, const Json::Value& object, const char* key, const Json::Value* taken);
  int failed(const char*, int code) { return code; }

 private:
  /// Returns what is to be told of a key that filled the field before, if one has.
  Findings labelTaken(const Json::Value& piece, const char* spelling, const Json::Value& value,
                      std::string FIELD_T::*field);

  /// @param code what the reader answers
  void reportVersion(const Json::Value& root, int code);
  void reportWrongType(const Json::Value& value, const std::string& key, const char* wanted,
                       Level level);
  void reportShadowed(const Json::Value& value, const Json::Value& winner, const std::string& key,
                      const std::string& winningKey, Level level);
  /// Reports the members that no reader knows and those lost to a later equal one.
  void reportStrangers(const Json::Value& object, Level level);
  const JsonMembers& membersAt(Level level) const {
    return members_[static_cast<std::size_t>(level)];
  }
  void reportNoObject(const Json::Value& value, Level level);
  /// Reports a text that scripts get only a part of.
  void reportZeroByte(const Json::Value& value, const char* key, Level level);

  Place placeOf(const Json::Value& value) const;
  Place placeOfKey(const Json::Value& value) const;

  JsonAnalysis& reader_;
  const JsonPositions* text_ = nullptr;
  std::array<JsonMembers, std::size(model::kLevels)> members_;  ///< of the current element
  /// The keys of the current piece that filled its label fields; null where none has.
  std::array<const char*, std::size(json_keys::kLabelFields)> labelWriters_{};
};

}  // namespace desk::check
