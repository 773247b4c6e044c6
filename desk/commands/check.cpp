// cusdesk check: tells what the readers pass over in silence.
#include <algorithm>
#include <cstdio>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/output.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/check/reports.h"
#include "desk/commands/commands.h"

namespace desk::commands {

namespace {

using check::CheckSession;
using check::FailOn;
using check::Report;

struct FailOnRow {
  const char* name;
  FailOn failOn;
};
constexpr FailOnRow kFailOn[] = {{"warning", FailOn::Warning},
                                 {"error", FailOn::Error},
                                 {"note", FailOn::Note},
                                 {"never", FailOn::Never}};

struct Format {
  const char* name;
  std::string (*write)(const Report&, FailOn, bool all);
};
constexpr Format kFormats[] = {
    {"text", [](const Report& report, FailOn,
                bool all) { return textReport(report, terminalOf(stdout), all); }},
    {"json", [](const Report& report, FailOn, bool) { return jsonReport(report); }},
    {"sarif", [](const Report& report, FailOn, bool) { return sarifReport(report); }},
    {"junit",
     [](const Report& report, FailOn failOn, bool) { return junitReport(report, failOn); }},
};

void checkFiles(CheckSession& session, const std::vector<std::string>& files) {
  Progress progress;
  for (std::size_t i = 0; i < files.size(); ++i) {
    progress.show("checking " + std::to_string(i + 1) + " of " + std::to_string(files.size()) +
                  ": " + escapeControls(files[i]));
    session.check(files[i]);
  }
}

int explainRule(const std::string& id) {
  std::fputs(check::explain(check::ruleNamed(id, "check: --explain")).c_str(), stdout);
  return kExitOk;
}

check::RuleSettings settingsOf(const Arguments& arguments) {
  check::RuleSettings settings;
  for (const std::string& setting : arguments.values("rule"))
    settings.set(setting, "check: --rule");
  return settings;
}

int run(const Arguments& arguments) {
  if (arguments.has("explain")) return explainRule(arguments.value("explain"));
  if (arguments.operands.empty()) throw Error(kExitUsage, "check: which files?");
  const Format& format = choice(arguments.value("format", "text"), "check: --format", kFormats);
  const FailOn failOn =
      choice(arguments.value("fail-on", "warning"), "check: --fail-on", kFailOn).failOn;

  CheckSession session(
      arguments.has("sequence") ? CheckSession::Readers::Kept : CheckSession::Readers::Fresh,
      settingsOf(arguments));
  checkFiles(session, arguments.operands);
  const Report& report = session.report();
  std::fputs(format.write(report, failOn, arguments.has("all")).c_str(), stdout);
  for (const check::Unreadable& file : report.unreadable) log(file.reason);
  if (!report.unreadable.empty()) return kExitIoError;
  const bool failed =
      std::any_of(report.findings.begin(), report.findings.end(),
                  [&](const check::Finding& finding) { return fails(finding, failOn); });
  return failed ? kExitFindings : kExitOk;
}

}  // namespace

Command checkCommand() {
  return {
      "check",
      "[FILE...]",
      "tell what the panel's readers ignore, carry over or trip over in job files",
      "  cusdesk check job.json                    what a freshly started panel would miss\n"
      "  cusdesk check --sequence monday.json tuesday.json  what leaks from one into the next\n"
      "  cusdesk check --rule attribute=off --rule duplicate-barcode=error job.xml\n"
      "  cusdesk check --explain carried-over      what it means and how to cure it\n"
      "  cusdesk check --format sarif --fail-on error *.json > check.sarif  for a build server\n",
      {
          {"format", "FORMAT", "text (default), json, sarif or junit", '\0', namesOf(kFormats)},
          {"fail-on", "SEVERITY", "exit with 1 from this on: note, warning (default), error, never",
           '\0', namesOf(kFailOn)},
          {"sequence", nullptr, "load the files in turn into one reader, as the machine does"},
          {"rule", "RULE=LEVEL", "take a rule as off, note, warning or error; may be given again"},
          {"explain", "RULE", "say what a rule is about, what the machine does and how to cure it",
           '\0', check::ruleIds()},
          {"all", nullptr, "show every finding, also those that differ in their place only"},
      },
      run,
  };
}

}  // namespace desk::commands
