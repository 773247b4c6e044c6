// Where the values of a script's rows come from.
#pragma once

#include "desk/base/table.h"
#include "desk/job/traced_job.h"
#include "desk/show/question.h"
#include "model/job_format.h"

namespace desk::show {

/// Sets the origins of the cells of an answer: the rows are made again, and the value that a cell
/// views is looked up by its address.
/// @param job what the reader holds that answered, read from the same file
/// Throws std::logic_error when the plug-in that answered makes other rows.
void addOrigins(TextTable& table, const Question& question, const job::TracedJob& job,
                model::JobFormat format);

}  // namespace desk::show
