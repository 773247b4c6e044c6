// Where the values of a script's rows come from.
#pragma once

#include "desk/job/traced_job.h"
#include "desk/show/table.h"

namespace desk::show {

/// Sets the origins of the cells of an answer.
/// @param job what the reader holds that answered, read from the same file
/// Throws std::logic_error when a cell holds another value than the job says.
void addOrigins(Table& table, const Question& question, const job::TracedJob& job, bool isXml);

}  // namespace desk::show
