// The forms in which a check reports.
#pragma once

#include <json/value.h>

#include <string>

#include "desk/base/terminal.h"
#include "desk/check/check_session.h"

namespace desk::check {

/// From which severity on a finding makes the check fail.
enum class FailOn { Note, Warning, Error, Never };

bool fails(const Finding& finding, FailOn failOn);

struct TextOptions {
  bool all;      ///< false: of findings that differ in their place only, the first few and a count
  bool summary;  ///< how many findings there are, in a line at the end
};

/// "file:line:column: severity: text [rule]", one line per finding. On a terminal with the source
/// line, the place underlined, in colour.
std::string textReport(const Report& report, const Terminal& terminal, const TextOptions& options);

/// What reports for programs list: of each rule the first thousand findings in a file, the last of
/// which says how many there are beyond.
Findings listed(const Report& report);

/// One object: "findings", "unreadable", "summary".
std::string jsonReport(const Report& report);

/// The parts of it.
Json::Value findingValue(const Report& report, const Finding& finding);
Json::Value unreadableValue(const Report& report);
Json::Value summaryValue(const Report& report);

/// SARIF 2.1.0. Columns count characters.
std::string sarifReport(const Report& report);

/// One suite per file, one case per finding; those that fail the check are failures.
std::string junitReport(const Report& report, FailOn failOn);

/// The name of a finding's file, as it was given.
const std::string& fileOf(const Report& report, const Place& place);

/// "1 error, 2 warnings, 0 notes"
std::string countsText(const Report& report);

/// How many findings there are of a severity.
std::size_t countOf(const Report& report, Severity severity);

}  // namespace desk::check
