// A cut list for the shop floor: one page to print, with boxes to tick and barcodes to scan.
#pragma once

#include <string>

#include "desk/check/check_session.h"
#include "desk/job/selection.h"
#include "model/job_format.h"
#include "model/job_records.h"

namespace desk::show {

/// An HTML document that needs nothing beside itself and prints on A4, bar by bar.
/// @param source what the job's file is called
/// @param errors how many a check found in it
std::string cutListHtml(const DATA_T& job, model::JobFormat format, const std::string& source,
                        const job::Selection& selection, std::size_t errors);

/// The same of a file that was checked.
std::string cutListHtml(const check::CheckSession& checked, const job::Selection& selection);

/// The style that it brings along, as a content policy allows it by name.
std::string cutListStyle();

}  // namespace desk::show
