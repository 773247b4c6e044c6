// What a check finds.
#pragma once

#include <string>
#include <vector>

#include "desk/check/source_text.h"

namespace desk::check {

enum class Severity { Note, Warning, Error };

/// "note", "warning", "error"
const char* nameOf(Severity severity);

/// An element of a job, counted from 1 within its parent; 0 where the level is not reached.
struct Element {
  int bar = 0;
  int piece = 0;
  int work = 0;

  bool operator==(const Element& other) const {
    return bar == other.bar && piece == other.piece && work == other.work;
  }
};

/// "the header", "bar 2", "piece 3 of bar 2", "work 1 of piece 3 of bar 2"
std::string describe(const Element& element);

/// A place in one of the files of a check.
struct Place {
  int file = -1;  ///< in the order of loading, from 0
  Position at;
};

/// A value that an element did not bring itself.
struct CarriedValue {
  std::string key;    ///< as the element would have had to spell it
  std::string value;  ///< as text
  Place place;        ///< where it was read
  Element element;    ///< for which element it was read
};

/// A script command that a value makes raise.
enum class Raises { Nothing, Load, GetCut, GetHole };

struct Finding {
  const char* rule;  ///< an id of the rule table
  Severity severity;
  Place place;
  std::string message;
  Element element{};
  std::string key{};                    ///< the key, element or attribute that it is about, if any
  std::vector<CarriedValue> carried{};  ///< the values that stayed
  Raises raises = Raises::Nothing;      ///< what raises because of it
};

using Findings = std::vector<Finding>;

/// The value between quotation marks, fit for one line: what cannot be shown is spelled out, what
/// is long is cut.
std::string quoted(const std::string& value);

}  // namespace desk::check
