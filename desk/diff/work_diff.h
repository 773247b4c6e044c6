// What differs between the works of a piece.
#pragma once

#include <vector>

#include "desk/diff/job_diff.h"

namespace desk::diff {

/// Works have no names of their own: equal ones are the same, then those of one operation in their
/// order.
std::vector<Change> compareWorks(const std::vector<WORK_T>& before,
                                 const std::vector<WORK_T>& after);

}  // namespace desk::diff
