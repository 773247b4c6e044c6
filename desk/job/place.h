// Where something stands: in which element of a job, and at which place of a file.
#pragma once

#include <string>

#include "desk/job/source_text.h"

namespace desk::job {

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

}  // namespace desk::job
