// cusdesk check: tells what the readers pass over in silence.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string_view>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/file_watch.h"
#include "desk/base/files.h"
#include "desk/base/output.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/check/reports.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"

namespace desk::commands {

namespace {

using check::CheckSession;
using check::FailOn;
using check::Report;
using check::TextOptions;

struct FailOnRow {
  const char* name;
  FailOn failOn;
};
constexpr FailOnRow kFailOn[] = {{"warning", FailOn::Warning},
                                 {"error", FailOn::Error},
                                 {"note", FailOn::Note},
                                 {"never", FailOn::Never}};

FailOn failOnOf(const std::string& name) {
  if (name == "none") throw Error(kExitUsage, "check: --fail-on none: did you mean 'never'?");
  return choice(name, "check: --fail-on", kFailOn).failOn;
}

struct Format {
  const char* name;
  std::string (*write)(const Report&, FailOn, const TextOptions&);
};
constexpr Format kFormats[] = {
    {"text", [](const Report& report, FailOn,
                const TextOptions& text) { return textReport(report, terminalOf(stdout), text); }},
    {"json", [](const Report& report, FailOn, const TextOptions&) { return jsonReport(report); }},
    {"sarif", [](const Report& report, FailOn, const TextOptions&) { return sarifReport(report); }},
    {"junit", [](const Report& report, FailOn failOn,
                 const TextOptions&) { return junitReport(report, failOn); }},
};

/// What the options ask for.
struct Order {
  const Format& format;
  FailOn failOn;
  CheckSession::Readers readers;
  check::RuleSettings rules;
  TextOptions text;
};

void checkFiles(CheckSession& session, const std::vector<std::string>& files) {
  Progress progress;
  for (std::size_t i = 0; i < files.size(); ++i) {
    progress.show("checking " + std::to_string(i + 1) + " of " + std::to_string(files.size()) +
                  ": " + escapeControls(files[i]));
    if (job::isFolder(files[i])) {
      session.refuse(files[i], job::kNoJobs);
    } else {
      session.check(files[i]);
    }
  }
}

int checkOnce(CheckSession& session, const Order& order, const std::vector<std::string>& files) {
  checkFiles(session, files);
  const Report& report = session.report();
  std::fputs(order.format.write(report, order.failOn, order.text).c_str(), stdout);
  for (const check::Unreadable& file : report.unreadable) log(file.reason);
  if (!report.unreadable.empty()) return kExitIoError;
  const bool failed =
      std::any_of(report.findings.begin(), report.findings.end(),
                  [&](const check::Finding& finding) { return fails(finding, order.failOn); });
  return failed ? kExitFindings : kExitOk;
}

/// "22:05:13", as the clock on the wall shows it.
std::string timeOfDay() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  char text[16] = "";
  if (localtime_r(&now, &parts) != nullptr) std::strftime(text, sizeof text, "%H:%M:%S", &parts);
  return text;
}

/// Checks anew whenever a file is saved, until the user has seen enough.
int checkWhileSaved(const Order& order, const std::vector<std::string>& operands) {
  if (std::string_view(order.format.name) != "text") {
    throw Error(kExitUsage, "check: --watch is for --format text");
  }
  if (contains(operands, kStandardStream)) {
    throw Error(kExitUsage, "check: standard input cannot be watched");
  }
  const auto look = [&](const std::vector<std::string>& files) {
    if (terminalOf(stdout).isTerminal) std::fputs("\x1b[H\x1b[2J", stdout);
    CheckSession session(order.readers, order.rules);
    checkOnce(session, order, files);
    std::printf("%s, waiting for the next save; Ctrl-C ends\n", timeOfDay().c_str());
    std::fflush(stdout);
  };
  watchFiles([&] { return job::jobFilesOf(operands); }, look);
  return kExitOk;
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
  const Terminal terminal = terminalOf(stdout);
  const bool isWatching = arguments.has("watch");
  const Order order = {
      choice(arguments.value("format", "text"), "check: --format", kFormats),
      failOnOf(arguments.value("fail-on", "warning")),
      arguments.has("sequence") ? CheckSession::Readers::Kept : CheckSession::Readers::Fresh,
      settingsOf(arguments),
      {arguments.has("all"), isWatching || (terminal.isForEyes() && !arguments.has("quiet"))}};
  if (isWatching) return checkWhileSaved(order, arguments.operands);
  // Never freed, as the program ends with it.
  static CheckSession& session = *new CheckSession(order.readers, order.rules);
  session.keepDocument();
  return checkOnce(session, order, job::jobFilesOf(arguments.operands));
}

std::vector<std::string> settableRules() {
  std::vector<std::string> starts = check::ruleIds();
  for (std::string& start : starts) start += '=';
  return starts;
}

}  // namespace

Command checkCommand() {
  return {
      "check",
      "[FILE...]",
      "tell what the panel's readers ignore, carry over or trip over in job files",
      "  cusdesk check window.json               what a freshly started panel would miss\n"
      "  cusdesk check --sequence window.json recut.json  what leaks from one into the next\n"
      "  cusdesk check --watch window.json       again whenever it is saved\n"
      "  cusdesk check mnt                       all *.json and *.xml below a folder\n"
      "  cusdesk check --rule attribute=off --rule duplicate-barcode=error window.xml\n"
      "  cusdesk check --explain carried-over    what it means and how to cure it\n"
      "  cusdesk check --format sarif --fail-on error *.json > check.sarif  for a build server\n",
      {
          {"format", "FORMAT", "text (default), json, sarif or junit", '\0', namesOf(kFormats)},
          {"fail-on", "SEVERITY", "exit with 1 from this on: note, warning (default), error, never",
           '\0', namesOf(kFailOn)},
          {"sequence", nullptr, "load the files in turn into one reader, as the machine does"},
          {"watch", nullptr, "check again whenever a file is saved, until Ctrl-C"},
          {"rule", "RULE=LEVEL", "take a rule as off, note, warning or error; may be given again",
           '\0', settableRules(), check::ruleLevels(), true},
          {"explain", "RULE", "say what a rule is about, what the machine does and how to cure it",
           '\0', check::ruleIds()},
          {"all", nullptr, "show every finding, also those that differ in their place only"},
      },
      run,
  };
}

}  // namespace desk::commands
