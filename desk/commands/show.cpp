// cusdesk show: the rows that scripts get for a job file, and where their values come from.
#include <cstdio>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/output.h"
#include "desk/base/table.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"
#include "desk/show/cause.h"
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
    {"table", [](const TextTable& table,
                 bool where) { return tableText(table, where, terminalOf(stdout)); }},
    {"json", jsonText},
    {"csv", csvText}};

Question questionOf(const Arguments& arguments) {
  if (arguments.operands.size() != 2) {
    throw Error(kExitUsage, "show: which file, and what of it? See 'cusdesk show --help'");
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

TextTable answer(const Invocation& invocation, const std::string& file, const Question& question) {
  const StdoutRedirect detour(invocation.command.has("verbose") ? StdoutRedirect::To::StandardError
                                                                : StdoutRedirect::To::Nowhere);
  const script::Plugin plugin(applyGlobalOptions(invocation.global));
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

TextTable tableFor(const Invocation& invocation, const std::string& file, const Question& question,
                   bool where) {
  Progress progress;
  // The plug-in's lines would get mixed up with it.
  if (!invocation.command.has("verbose")) progress.show("loading " + escapeControls(file));
  try {
    TextTable table = answer(invocation, file, question);
    if (where) addWhere(table, question, file);
    return table;
  } catch (const show::Raised& raised) {
    throw Error(raised.code(), raised.what() + show::causeOf(raised, file));
  }
}

int run(const Invocation& invocation) {
  const Arguments& arguments = invocation.command;
  const Question question = questionOf(arguments);
  const std::string& file = arguments.operands[0];
  const Format& format = choice(arguments.value("format", "table"), "show: --format", kFormats);
  const bool where = arguments.has("where");
  std::fputs(format.write(tableFor(invocation, file, question, where), where).c_str(), stdout);
  return kExitOk;
}

}  // namespace

Command showCommand() {
  return {
      "show",
      "FILE bars|works|cuts|holes|labels|dimensions",
      "show the rows that scripts get for a job file",
      "  cusdesk show job.json cuts                one row per piece, as get_cut(\"\") answers\n"
      "  cusdesk show job.json --where works --barcode DEMO-0101  with the line of each value\n"
      "  cusdesk show job.xml labels --format csv  for a spreadsheet\n",
      {
          {"barcode", "CODE", "works or dimensions of the pieces with this barcode"},
          {"bar", "NUMBER", "cuts of the bars with this number, or these bars"},
          {"format", "FORMAT", "table (default), json or csv", '\0', namesOf(kFormats)},
          {"where", nullptr, "add the line that each value was read from; mark carried ones"},
          {"verbose", nullptr, "let the plug-in's lines go to standard error", 'v'},
          {"help", nullptr, "show this help", 'h'},
      },
      run,
      true,
  };
}

}  // namespace desk::commands
