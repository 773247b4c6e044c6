// What a check found in a job, a window at a time, with the lines of the source.
#pragma once

#include <string>

#include "desk/check/check_session.h"
#include "desk/view/query.h"

namespace desk::view {

/// The findings of a severity, or about an element and what it holds, or both; and the first of them
/// that is about an element to find.
std::string findingsDocument(const check::Report& report, const Query& query);

/// How many findings are about an element or what it holds, or have consequences there.
std::size_t countAbout(const check::Report& report, const job::Element& element);

/// Lines of the source, as a check shows them.
std::string sourceDocument(const job::SourceText& source, const Query& query);

}  // namespace desk::view
