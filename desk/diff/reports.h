// The forms in which differences are told.
#pragma once

#include <string>

#include "desk/base/terminal.h"
#include "desk/diff/job_diff.h"

namespace desk::diff {

/// The names of the two jobs' files, as they were given.
struct Files {
  std::string before;
  std::string after;
};

/// Pieces that changed in the same way are told together, with old and new values and the names of
/// the first few. The last line counts.
/// @param all names every piece
std::string textReport(const JobDiff& diff, const Files& files, const Terminal& terminal, bool all);

/// One object: "old", "new", "same", "differences", "unknown".
std::string jsonReport(const JobDiff& diff, const Files& files);

}  // namespace desk::diff
