// cusdesk show: the rows that scripts get for a job file, and where their values come from.
#include <cstdio>
#include <filesystem>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/numbers.h"
#include "desk/base/output.h"
#include "desk/base/table.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/check/reports.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"
#include "desk/show/cause.h"
#include "desk/show/job_summary.h"
#include "desk/show/origins.h"
#include "desk/show/script_answers.h"

namespace desk::commands {

namespace {

using show::Question;
using show::Subject;

struct SubjectRow {
  const char* name;
  Subject subject;
};
constexpr SubjectRow kSubjects[] = {
    {"bars", Subject::Bars},   {"works", Subject::Works},   {"cuts", Subject::Cuts},
    {"holes", Subject::Holes}, {"labels", Subject::Labels}, {"dimensions", Subject::Dimensions}};

struct Format {
  const char* name;
  std::string (*write)(const TextTable&, bool where);
};
constexpr Format kFormats[] = {
    {"text", [](const TextTable& table,
                bool where) { return tableText(table, where, terminalOf(stdout)); }},
    {"json", jsonText},
    {"csv", csvText}};

double lengthOf(const std::string& text) {
  double length = 0.0;
  bool whole = false;
  if (numberOf(text, length, whole) && whole && length >= 0.0) return length;
  throw Error(kExitUsage, "show: --keep-from is a length, not '" + text + "'");
}

/// What stands for no file although it is taken for one: a table, or a word like one.
void refuseWrongWords(const std::vector<std::string>& files) {
  const std::vector<std::string> tables = namesOf(kSubjects);
  for (const std::string& file : files) {
    if (std::filesystem::exists(file)) continue;
    if (contains(tables, file)) {
      throw Error(kExitUsage,
                  "show: '" + file + "' stands behind the file: 'cusdesk show FILE " + file + "'");
    }
    const std::string near = nearest(file, tables);
    if (near.empty() || files.size() == 1) continue;
    throw Error(kExitUsage,
                "show: '" + file + "' is neither a file nor a table; did you mean '" + near + "'?");
  }
}

/// Whether no table is asked for.
bool isSummary(const Arguments& arguments) {
  std::vector<std::string> files = arguments.operands;
  const bool isSummary = !files.empty() && !contains(namesOf(kSubjects), files.back());
  if (!isSummary && files.size() > 1) files.pop_back();
  refuseWrongWords(files);
  return isSummary;
}

Question questionOf(const Arguments& arguments) {
  if (arguments.operands.size() != 2) {
    throw Error(kExitUsage, "show: which file? A table is one file's; see 'cusdesk show --help'");
  }
  const Subject subject = choice(arguments.operands[1], "show: what to show", kSubjects).subject;
  const bool takesBarCode = subject == Subject::Works || subject == Subject::Dimensions;
  const bool takesBar = subject == Subject::Cuts || subject == Subject::Bars;
  if (arguments.has("barcode") && !takesBarCode) {
    throw Error(kExitUsage, "show: --barcode is for works and dimensions");
  }
  if (arguments.has("bar") && !takesBar) {
    throw Error(kExitUsage, "show: --bar is for bars and cuts");
  }
  if (subject == Subject::Dimensions && !arguments.has("barcode")) {
    throw Error(kExitUsage, "show: dimensions need a --barcode");
  }
  return {subject, arguments.value("barcode"), arguments.value("bar")};
}

TextTable answer(const Arguments& arguments, const std::string& file, const Question& question) {
  const StdoutRedirect detour(arguments.has("verbose") ? StdoutRedirect::To::StandardError
                                                       : StdoutRedirect::To::Nowhere);
  const script::Plugin plugin(applyGlobalOptions(arguments));
  script::ScriptEngine engine(plugin, script::ModuleErrors::Guarded);
  show::loadJob(engine, job::presentJob(file).name);
  return ask(engine, question);
}

void addWhere(TextTable& table, const Question& question, const std::string& file) {
  check::CheckSession session(check::CheckSession::Readers::Fresh);
  session.check(file);
  const model::JobFormat format = model::formatOfName(file);
  addOrigins(table, question, session.job(format), format);
}

TextTable tableFor(const Arguments& arguments, const std::string& file, const Question& question,
                   bool where) {
  Progress progress;
  // The plug-in's lines would get mixed up with it.
  if (!arguments.has("verbose")) progress.show("loading " + escapeControls(file));
  try {
    TextTable table = answer(arguments, file, question);
    if (where) addWhere(table, question, file);
    return table;
  } catch (const show::Raised& raised) {
    throw Error(raised.code(), raised.what() + show::causeOf(raised, file));
  }
}

struct SummaryFormat {
  const char* name;
  std::string (*write)(const show::JobSummary&);
};
constexpr SummaryFormat kSummaryFormats[] = {
    {"text",
     [](const show::JobSummary& summary) { return summaryText(summary, terminalOf(stdout)); }},
    {"json", show::summaryJson},
    {"csv", show::summaryCsv}};

/// Reads and checks a job. Throws Error when a panel would not load it.
void load(check::CheckSession& session, const std::string& file) {
  session.check(file);
  const check::Report& report = session.report();
  if (!report.unreadable.empty()) throw Error(kExitIoError, report.unreadable.front().reason);
  if (session.loads()) return;
  throw Error(kExitIoError, "cannot load " + file + "; cusdesk check " + file + " tells why");
}

int summarize(const Arguments& arguments) {
  const SummaryFormat& format =
      choice(arguments.value("format", "text"), "show: --format of a summary", kSummaryFormats);
  show::JobSummary summary(lengthOf(arguments.value("keep-from", "500")));
  Progress progress;
  for (const std::string& file : arguments.operands) {
    progress.show("summing up " + escapeControls(file));
    check::CheckSession session(check::CheckSession::Readers::Fresh);
    load(session, file);
    const auto count = [&](check::Severity severity) {
      return countOf(session.report(), severity);
    };
    summary.add(file, session.job(model::formatOfName(file)).job,
                {count(check::Severity::Error), count(check::Severity::Warning),
                 count(check::Severity::Note)});
  }
  std::fputs(format.write(summary).c_str(), stdout);
  return kExitOk;
}

int run(const Arguments& arguments) {
  if (isSummary(arguments)) return summarize(arguments);
  const Question question = questionOf(arguments);
  const std::string& file = arguments.operands[0];
  const Format& format = choice(arguments.value("format", "text"), "show: --format", kFormats);
  const bool where = arguments.has("where");
  std::fputs(format.write(tableFor(arguments, file, question, where), where).c_str(), stdout);
  return kExitOk;
}

}  // namespace

Command showCommand() {
  return {
      "show",
      "FILE... [bars|works|cuts|holes|labels|dimensions]",
      "sum up job files, or show the rows that scripts get for one",
      "  cusdesk show job.json                     bars, yield, stock to fetch, leftovers\n"
      "  cusdesk show job.json cuts                one row per piece, as get_cut(\"\") answers\n"
      "  cusdesk show job.json --where works --barcode DEMO-0101  with the line of each value\n"
      "  cusdesk show job.xml labels --format csv  for a spreadsheet\n",
      {
          {"barcode", "CODE", "works or dimensions of the pieces with this barcode"},
          {"bar", "NUMBER", "cuts of the bars with this number, or these bars"},
          {"format", "FORMAT", "text (default), json or csv", '\0', namesOf(kFormats)},
          {"keep-from", "LENGTH",
           "how long a leftover is worth keeping, in a summary (default: 500)"},
          {"where", nullptr, "add the line that each value was read from; mark carried ones"},
      },
      run,
  };
}

}  // namespace desk::commands
