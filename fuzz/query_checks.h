// Every question to a reader, checked against a plain walk over the job it holds.
#pragma once

#include <set>

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "json/json_analysis.h"
#include "xml/xml_analysis.h"

namespace fuzzing {

/// The answers that a plain walk finds. Slow and obvious, so that it can judge the quick ones.
namespace plain {

inline bool gated(const DATA_T& job) {
  return job.Version != "1.0";
}

std::string works(const DATA_T& job);
std::string worksOf(const DATA_T& job, const std::string& barCode);
std::string cuts(const DATA_T& job);
std::string cutsOf(const DATA_T& job, const std::string& barNumber);
std::string labels(const DATA_T& job);
std::string holes(const DATA_T& job);
std::string dimensions(const DATA_T& job, const std::string& barCode);

/// Throws what converting the bar numbers throws.
int highestBarNumber(const DATA_T& job);

}  // namespace plain

/// Texts of the job that make sense as barcodes and as bar numbers, and some that do not.
std::set<std::string> someBarCodes(const DATA_T& job);
std::set<std::string> someBarNumbers(const DATA_T& job);

/// Asks everything. Returns all answers, for comparison with those of another time.
std::string askAll(JsonAnalysis& reader);
std::string askAll(XmlAnalysis& reader);

}  // namespace fuzzing
