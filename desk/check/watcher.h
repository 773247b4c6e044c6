// What the watchers of both readers share.
//
// A watcher lets the real reader read a document and is told of each step of its walk. It adds what
// the records do not tell: where each of their values was read, and what the reader passed over in
// silence. It decides nothing about what is read.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "desk/base/numbers.h"
#include "desk/check/advice.h"
#include "desk/check/finding.h"
#include "desk/check/missing_keys.h"
#include "desk/job/source_text.h"
#include "desk/job/traced_job.h"

namespace desk::check {

/// The files of a check, in the order of loading.
using Sources = std::vector<std::unique_ptr<SourceText>>;

/// What a watcher keeps between files are the origins of what its reader carries over. Everything
/// else is about the file that is being read.
class Watcher {
 public:
  /// What the reader holds after a read. Good for as long as watcher and reader live.
  const TracedJob& traced() const { return traced_; }

 protected:
  /// @param job the records of the reader, which must outlive the watcher
  Watcher(const DATA_T& job, model::JobFormat format)
      : traced_(job), missing_(format), advisor_(format) {}

  /// Starts with the last one of `sources`. Both must outlive the read.
  void start(const Sources& sources, Findings& findings);

  /// Reports what is told of the file as a whole, once it is read.
  void finish() { missing_.report(*findings_); }

  const Advice& adviceFor(const std::string& unknown, Level level) {
    return advisor_.on(unknown, level);
  }

  /// Steps to the next element of a level. A cut stays with its piece.
  void enter(Level level);
  const Element& here() const { return here_; }

  const SourceText& source() const { return *sources_->back(); }
  int file() const { return static_cast<int>(sources_->size()) - 1; }

  /// Something about the element at which the walk stands.
  Finding found(const char* rule, Severity severity, const Place& place, const std::string& message,
                const std::string& key = {}) const {
    return {rule, severity, place, message, here_, key};
  }

  /// Reports it. Of each rule the first so many in a file are kept.
  Finding& report(Finding finding);
  Finding& report(const char* rule, Severity severity, const Place& place,
                  const std::string& message, const std::string& key = {});

  /// An error for what steers the machine, else a warning.
  static Severity severityOf(Level level, const std::string& key) {
    return steersMachine(level, key) ? Severity::Error : Severity::Warning;
  }

  /// The origins of the fields of the record under construction.
  template <class Record>
  Trace<Record>& trace() {
    return std::get<CurrentTrace<Record>>(traces_).fields;
  }

  /// Notes that a field of the record under construction has a value of the current element.
  template <class Record>
  void noteOrigin(std::size_t field, const Place& place) {
    trace<Record>()[field] = traced_.add(place, here_);
  }

  /// Adds the origins of the fields of an element that is read to the job's.
  void keepTrace(Level level, const Place& place);

  /// A value that stayed, and what the finding depends on.
  struct Stayed {
    CarriedValue value;
    Severity severity;
  };

  /// What an element did not bring.
  struct Absent {
    std::vector<Stayed> stayed;  ///< values of elements before it
    KeySet never = 0;            ///< keys that no element before it brought either
    unsigned keyCount = 0;       ///< of the tables that were looked at
  };

  /// Appends the values of a record that the current element did not bring, in the format's words.
  template <const auto& table, class Record>
  void collectAbsent(const Record& record, Absent& absent);

  /// Reports them, one finding for each element that they come from.
  void reportStayed(const std::vector<Stayed>& stayed, const Place& place);

  /// "line 7", or "old.json:7" for a place in another file.
  std::string placeText(const Place& place) const;

  TracedJob traced_;
  MissingKeys missing_;
  Advisor advisor_;

 private:
  void reportStayedOf(const std::vector<Stayed>& all, const Stayed& first, const Place& place);

  /// "line 7", "lines 7-9" or "old.json:7-9": where values of one element stand.
  std::string linesText(const std::vector<Stayed>& stayed) const;

  /// Some of the values, those that steer the machine first, and how many more there are.
  static std::string gravest(std::vector<Stayed> stayed);

  template <class Record>
  struct CurrentTrace {
    Trace<Record> fields{};
  };
  std::tuple<CurrentTrace<DATA_T>, CurrentTrace<BAR_T>, CurrentTrace<PIECE_CHILD_SECOND_T>,
             CurrentTrace<CUT_T>, CurrentTrace<FIELD_T>, CurrentTrace<WORK_T>>
      traces_;
  Element here_;
  const Sources* sources_ = nullptr;
  Findings* findings_ = nullptr;
  std::map<const char*, std::size_t> told_;  ///< by rule, in the current file
  Finding dropped_;                          ///< room for one beyond those that are kept
};

/// Whether an element that lacks a key leaves a value behind. Where the header lacks the version,
/// no other rule is needed.
template <class Record>
bool leavesValue(const model::Key<Record>& key) {
  const bool isVersion = std::string_view(key.spelling) == json_keys::kVersionKey.spelling;
  return fieldOf(key) < std::size(FieldsOf<Record>::keys) && !isVersion;
}

inline bool leavesValue(const json_keys::LabelKey&) {
  return true;
}

template <const auto& table, class Record>
void Watcher::collectAbsent(const Record& record, Absent& absent) {
  static constexpr auto kFields = fieldsOf<table>();
  const auto& keys = keysIn(table);
  const Trace<Record>& origins = trace<Record>();
  for (std::size_t i = 0; i < std::size(keys); ++i) {
    const auto& key = keys[i];
    const unsigned bit = absent.keyCount++;
    const OriginId id = kFields[i] < origins.size() ? origins[kFields[i]] : 0;
    if (id == 0 && leavesValue(key)) absent.never |= KeySet{1} << bit;
    const Origin& origin = traced_.origins[id];
    if (id == 0 || (origin.place.file == file() && origin.element == here_)) continue;
    absent.stayed.push_back({{key.spelling, textOf(record, key), origin.place, origin.element},
                             severityOf(FieldsOf<Record>::level, key.spelling)});
  }
}

}  // namespace desk::check
