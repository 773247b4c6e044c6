// What the shadows of both readers share: where they stand in a file, and what they tell about it.
//
// A shadow follows a reader's walk over the same document with the reader's own key tables. It ends
// up with the same records, knows of each value where it was read, and says what the reader passes
// over in silence.
#pragma once

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "desk/check/advice.h"
#include "desk/check/finding.h"
#include "desk/check/source_text.h"
#include "desk/check/traced_job.h"
#include "desk/number_text.h"

namespace desk::check {

/// The files of a check, in the order of loading.
using Sources = std::vector<std::unique_ptr<SourceText>>;

/// What a shadow keeps between files is the reader's state, as in the reader. Everything else is
/// about the file that it reads at the moment.
class ShadowReader {
 public:
  const ReaderState& state() const { return state_; }

 protected:
  /// Starts with the last one of `sources`. Both must outlive the read.
  void start(const Sources& sources, Findings& findings);

  const SourceText& source() const { return *sources_->back(); }
  int file() const { return static_cast<int>(sources_->size()) - 1; }

  Finding& report(const char* rule, Severity severity, const Place& place,
                  const std::string& message, const Element& element, const std::string& key = {});

  /// An error for what steers the machine, else a warning.
  static Severity severityOf(Level level, const std::string& key) {
    return steersMachine(level, key) ? Severity::Error : Severity::Warning;
  }

  /// A value that stayed, and what the finding depends on.
  struct Stayed {
    CarriedValue value;
    Severity severity;
  };

  /// Appends the values of a record that element `here` did not bring, in the format's words.
  template <class Keys, class Record>
  void collectStayed(const Keys& keys, const Traced<Record>& current, Level level,
                     const Element& here, std::vector<Stayed>& stayed) const;

  /// Reports them, one finding for each element that they come from.
  void reportStayed(const std::vector<Stayed>& stayed, const Element& here, const Place& place);

  /// "line 7", or "old.json:7" for a place in another file.
  std::string placeText(const Place& place) const;

  ReaderState state_;

 private:
  void reportStayedOf(const std::vector<Stayed>& all, const Stayed& first, const Element& here,
                      const Place& place);

  const Sources* sources_ = nullptr;
  Findings* findings_ = nullptr;
};

/// Scripts tell -0.0 from the 0.0 of a new record.
inline bool isAsConstructed(double number) {
  return number == 0.0 && !std::signbit(number);
}

/// The value of a field as text; empty for one that is as it was constructed.
template <class Record>
std::string textOf(const Record& record, const model::Key<Record>& key) {
  using model::KeyKind;
  switch (key.kind) {
    case KeyKind::Text:
    case KeyKind::IntegerText:
      return record.*key.field.text;
    case KeyKind::Integer:
    case KeyKind::Number:
      return isAsConstructed(record.*key.field.number) ? ""
                                                       : shortestText(record.*key.field.number);
    case KeyKind::Flag:
      return record.*key.field.flag ? "true" : "";
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return "";
}

inline std::string textOf(const FIELD_T& record, const json_keys::LabelKey& key) {
  return record.*key.field;
}

template <class Record>
OriginId originOf(const Trace<Record>& trace, const model::Key<Record>& key) {
  const std::size_t field = fieldOf(key);
  return field < trace.size() ? trace[field] : 0;
}

inline OriginId originOf(const Trace<FIELD_T>& trace, const json_keys::LabelKey& key) {
  return trace[static_cast<std::size_t>(&key - json_keys::kLabelFields)];
}

template <class Keys, class Record>
void ShadowReader::collectStayed(const Keys& keys, const Traced<Record>& current, Level level,
                                 const Element& here, std::vector<Stayed>& stayed) const {
  for (const auto& key : keys) {
    const OriginId id = originOf(current.trace, key);
    const Origin& origin = state_.traced.origins[id];
    if (id == 0 || (origin.place.file == file() && origin.element == here)) continue;
    const std::string text = textOf(current.record, key);
    if (text.empty()) continue;
    stayed.push_back(
        {{key.spelling, text, origin.place, origin.element}, severityOf(level, key.spelling)});
  }
}

}  // namespace desk::check
