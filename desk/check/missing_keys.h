// The keys that elements lack and that no element before them had: on a panel that was just started
// their fields are empty, on any other they are those of the job before.
#pragma once

#include <cstdint>
#include <map>
#include <tuple>

#include "desk/check/advice.h"
#include "desk/check/finding.h"

namespace desk::check {

/// A set of keys of one kind of element: a bit for each, in the order of its key tables. Those of a
/// JSON piece are followed by its label fields and its cut.
using KeySet = std::uint64_t;

/// The spelling of a key by its bit.
const char* spellingOf(unsigned bit, Level level, model::JobFormat format);

/// Counts the elements of one file that lack the same keys, so that each set is told once.
class MissingKeys {
 public:
  explicit MissingKeys(model::JobFormat format) : format_(format) {}

  void clear() { sets_.clear(); }

  /// @param isEmpty whether the keys are there and hold nothing
  void add(Level level, KeySet keys, bool isEmpty, const Element& element, const Place& place);

  /// One finding for each kind of element, severity and set of keys.
  void report(Findings& findings) const;

 private:
  struct First {
    Element element;
    Place place;
    std::size_t count = 0;  ///< of the elements
  };
  using Set = std::tuple<Level, Severity, bool, KeySet>;

  Finding findingOf(const Set& set, const First& first) const;

  model::JobFormat format_;
  std::map<Set, First> sets_;
};

}  // namespace desk::check
