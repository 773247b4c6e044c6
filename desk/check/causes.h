// Which findings come of others.
#pragma once

#include <cstddef>

#include "desk/check/finding.h"
#include "model/job_format.h"

namespace desk::check {

/// Puts the findings from the index `from` on that tell of a missing value under the finding that
/// tells why it is missing, where there is one, and what comes of a misread value under that. The
/// cause takes the graver severity of the two. Where the user set its severity it keeps that one,
/// and what is graver stays a finding of its own.
void putUnderCauses(Findings& findings, std::size_t from, model::JobFormat format);

}  // namespace desk::check
