#include "desk/check/reports.h"

#include <algorithm>

#include <map>
#include <utility>
#include "desk/base/text.h"

namespace desk::check {

namespace {

constexpr std::size_t kListed = 1000;

}  // namespace

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

Findings listed(const Report& report) {
  std::map<std::pair<int, const char*>, std::size_t> counts;
  for (const Finding& one : report.findings) ++counts[{one.place.file, one.rule}];
  std::map<std::pair<int, const char*>, std::size_t> seen;
  Findings findings;
  for (const Finding& one : report.findings) {
    const std::size_t number = ++seen[{one.place.file, one.rule}];
    if (number > kListed) continue;
    findings.push_back(one);
    const std::size_t beyond = counts[{one.place.file, one.rule}] - kListed;
    if (number < kListed || beyond == 0) continue;
    findings.back().message += " (" + std::to_string(beyond) + " more findings of this rule)";
  }
  return findings;
}

std::size_t countOf(const Report& report, Severity severity) {
  const auto& all = report.findings;
  return static_cast<std::size_t>(std::count_if(
      all.begin(), all.end(), [&](const Finding& one) { return one.severity == severity; }));
}

std::string countsText(const Report& report) {
  return countText(countOf(report, Severity::Error), "error") + ", " +
         countText(countOf(report, Severity::Warning), "warning") + ", " +
         countText(countOf(report, Severity::Note), "note");
}

}  // namespace desk::check
