// What can be told of a job only once it is read whole, and which findings come of others.
#pragma once

#include <cstddef>
#include <string>

#include "desk/check/finding.h"
#include "desk/job/traced_job.h"
#include "model/job_format.h"

namespace desk::check {

/// The job that a reader holds after a read, for the rules about whole jobs.
struct LoadedJob {
  const TracedJob& traced;
  int file;
  model::JobFormat format;
};

/// The place of a value: its own when it was read from this file, else that of the element which
/// lacks it.
Place placeOfValue(const LoadedJob& job, OriginId value, const Place& element);

/// What loads but answers nothing: another version in an XML job.
void checkVersion(const LoadedJob& job, Findings& findings);

/// Pieces that scripts cannot tell apart: by barcode, or by bar and piece number.
void checkDuplicates(const LoadedJob& job, Findings& findings);

/// Numbers that make a script command raise.
void checkRaises(const LoadedJob& job, Findings& findings);

/// Measures that cannot be right. What is empty because it was never read, or raises, is told
/// elsewhere.
void checkMeasures(const LoadedJob& job, Findings& findings);

/// Puts the findings from the index `from` on that tell of a missing value under the finding that
/// tells why it is missing, where there is one, and what comes of a misread value under that. The
/// cause takes the graver severity of the two. Where the user set its severity it keeps that one,
/// and what is graver stays a finding of its own.
void putUnderCauses(Findings& findings, std::size_t from, model::JobFormat format);

}  // namespace desk::check
