// Every question to a reader. What it must answer is for the readers' own tests; here no question
// may do anything but answer, or throw what is documented.
#pragma once

#include <set>

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "json/json_analysis.h"
#include "xml/xml_analysis.h"

namespace fuzzing {

/// Texts of the job that make sense as barcodes and as bar numbers, and some that do not.
std::set<std::string> someBarCodes(const DATA_T& job);
std::set<std::string> someBarNumbers(const DATA_T& job);

/// Asks everything. Returns all answers, for comparison with those of another time.
std::string askAll(JsonAnalysis& reader);
std::string askAll(XmlAnalysis& reader);

}  // namespace fuzzing
