#include "desk/check/reports.h"

#include <algorithm>

namespace desk::check {

bool fails(const Finding& finding, FailOn failOn) {
  switch (failOn) {
    case FailOn::Note:
      return true;
    case FailOn::Warning:
      return finding.severity >= Severity::Warning;
    case FailOn::Error:
      return finding.severity >= Severity::Error;
    case FailOn::Never:
      break;
  }
  return false;
}

const std::string& fileOf(const Report& report, const Place& place) {
  return report.sources.at(static_cast<std::size_t>(place.file))->name();
}

std::size_t countOf(const Report& report, Severity severity) {
  const auto& all = report.findings;
  return static_cast<std::size_t>(std::count_if(
      all.begin(), all.end(), [&](const Finding& one) { return one.severity == severity; }));
}

}  // namespace desk::check
