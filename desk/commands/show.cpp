// cusdesk show: the rows that scripts get for a job file, and where their values come from.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <initializer_list>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/output.h"
#include "desk/base/table.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/commands/commands.h"
#include "desk/commands/show_job.h"
#include "desk/job/job_file.h"
#include "desk/script/script_engine.h"
#include "desk/show/answers.h"
#include "desk/show/job_rows.h"
#include "desk/show/script_answers.h"

namespace desk::commands {

namespace {

using show::kTables;
using show::Question;
using show::Subject;
using show::TableRow;

struct Format {
  const char* name;
  std::string (*write)(const TextTable&, bool where);
};
constexpr Format kFormats[] = {
    {"text", [](const TextTable& table,
                bool where) { return tableText(table, where, terminalOf(stdout)); }},
    {"json", jsonText},
    {"csv", csvText}};

/// Those of the cuts; the last is not one of rows.
constexpr Format kCutFormats[] = {kFormats[0], kFormats[1], kFormats[2], {"html", nullptr}};

/// Refuses a table that stands where a file is expected.
[[noreturn]] void refuseTable(const std::string& table, const std::vector<std::string>& operands) {
  const auto isTable = [](const std::string& word) { return contains(namesOf(kTables), word); };
  const std::string usage = "'cusdesk show FILE " + table + "'";
  if (std::all_of(operands.begin(), operands.end(), isTable)) {
    throw Error(kExitUsage, "show: which FILE? " + usage);
  }
  if (isTable(operands.back()) && !isTable(operands.front())) {
    throw Error(kExitUsage,
                "show: '" + table + "' or '" + operands.back() + "'? One table at a time");
  }
  throw Error(kExitUsage, "show: '" + table + "' stands behind the file: " + usage);
}

/// Refuses what is neither a file nor a table.
[[noreturn]] void refuseWord(const std::string& word, const std::string& near) {
  throw Error(kExitUsage,
              "show: '" + word + "' is neither a file nor a table; did you mean '" + near + "'?");
}

/// What stands for no file although it is taken for one: a table, or a word like one.
void refuseWrongWords(const std::vector<std::string>& files,
                      const std::vector<std::string>& operands) {
  const std::vector<std::string> tables = namesOf(kTables);
  for (const std::string& file : files) {
    if (std::filesystem::exists(file)) continue;
    if (contains(tables, file)) refuseTable(file, operands);
    const std::string near = nearest(file, tables);
    if (near.empty() || files.size() == 1) continue;
    refuseWord(file, near);
  }
}

/// Whether no table is asked for.
bool isSummary(const Arguments& arguments) {
  std::vector<std::string> files = arguments.operands;
  const bool isSummary = !files.empty() && !contains(namesOf(kTables), files.back());
  if (!isSummary && files.size() > 1) files.pop_back();
  refuseWrongWords(files, arguments.operands);
  return isSummary;
}

[[noreturn]] void refuseOption(const std::string& option, const std::string& what) {
  throw Error(kExitUsage, "show: --" + option + " is not for " + what);
}

/// Throws Error for the first of the options that is given: `what` would pass over it.
void refuseOptions(const Arguments& arguments, const std::string& what,
                   std::initializer_list<const char*> options) {
  for (const std::string option : options) {
    if (arguments.has(option)) refuseOption(option, what);
  }
}

Question questionOf(const Arguments& arguments, const TableRow& table) {
  if (!table.takesBar) refuseOptions(arguments, table.name, {"bar"});
  if (!table.takesBarCode) refuseOptions(arguments, table.name, {"barcode"});
  if (table.subject == Subject::Dimensions && !arguments.has("barcode")) {
    throw Error(kExitUsage, "show: dimensions need a --barcode");
  }
  return {table.subject, arguments.value("barcode"), arguments.value("bar")};
}

TextTable answer(const Arguments& arguments, const std::string& file, const Question& question) {
  const StdoutRedirect detour(arguments.has("verbose") ? StdoutRedirect::To::StandardError
                                                       : StdoutRedirect::To::Nowhere);
  const script::Plugin plugin(applyGlobalOptions(arguments, RootUse::Reading));
  script::ScriptEngine engine(plugin, script::ModuleErrors::Guarded);
  script::loadJob(engine, file);
  return ask(engine, question);
}

/// Adds where the values were read, and leaves the rows that are asked for.
void finish(TextTable& table, const Question& question, const std::string& file, bool where) {
  const bool isWhole = question.bar.empty() && question.barCode.empty();
  if (isWhole && !where) return;
  check::CheckSession session(check::CheckSession::Readers::Fresh);
  session.check(file);
  const DATA_T& job = session.job().job;
  job::requireAny("show", job, {question.bar, question.barCode});
  if (where) addOrigins(table, panelQuestion(question), session);
  narrow(table, question, job);
}

TextTable tableFor(const Arguments& arguments, const std::string& file, const Question& question,
                   bool where) {
  Progress progress;
  // The plug-in's lines would get mixed up with it.
  if (!arguments.has("verbose")) progress.show("loading " + escapeControls(file));
  try {
    TextTable table = answer(arguments, file, panelQuestion(question));
    finish(table, question, file, where);
    return table;
  } catch (const show::Raised& raised) {
    throw Error(raised.code(), raised.what() + show::causeOf(raised, file));
  }
}

int showRows(const Arguments& arguments, const TableRow& row) {
  const Question question = questionOf(arguments, row);
  const Format& format = choice(arguments.value("format", "text"), "show: --format", kFormats);
  const bool where = arguments.has("where");
  const TextTable table = tableFor(arguments, arguments.operands.front(), question, where);
  std::fputs(format.write(table, where).c_str(), stdout);
  const std::string remark = remarkOn(table, question);
  if (!remark.empty() && !arguments.has("quiet")) log(remark);
  return kExitOk;
}

int run(const Arguments& arguments) {
  if (isSummary(arguments)) {
    refuseOptions(arguments, "a summary; name a table too", {"bar", "barcode", "where"});
    return showSummary(arguments);
  }
  if (arguments.operands.size() != 2) {
    throw Error(kExitUsage, "show: which file? A table is one file's; see 'cusdesk show --help'");
  }
  refuseOptions(arguments, "a table", {"keep-from"});
  const TableRow& table = choice(arguments.operands.back(), "show: what to show", kTables);
  const bool isCuts = table.subject == Subject::Cuts && !table.isPieces;
  const std::string format = arguments.value("format", "text");
  if (isCuts && choice(format, "show: --format", kCutFormats).write == nullptr) {
    refuseOptions(arguments, "a cut list", {"where"});
    return printCutList(arguments);
  }
  if (!table.isPieces) return showRows(arguments, table);
  refuseOptions(arguments, "pieces, which tell their lines as they are", {"where"});
  return showPieces(arguments);
}

}  // namespace

Command showCommand() {
  return {
      "show",
      "FILE... [bars|pieces|works|cuts|holes|labels|dimensions]",
      "sum up job files, or show the rows that scripts get for one",
      "  cusdesk show window.json                bars, yield, stock to fetch, leftovers\n"
      "  cusdesk show window.json cuts           one row per piece, as get_cut(\"\") answers\n"
      "  cusdesk show window.json pieces --barcode DEMO-0101  where a piece is, and what is done "
      "to "
      "it\n"
      "  cusdesk show window.json --where works --barcode DEMO-0101  with the line of each value\n"
      "  cusdesk show window.xml labels --format csv  for a spreadsheet\n"
      "  cusdesk show window.json cuts --format html > list.html  a cut list to print, with "
      "barcodes\n",
      {
          {"barcode", "CODE", "only what is about pieces with this barcode"},
          {"bar", "NUMBER", "only what is about bars with this number"},
          {"format", "FORMAT", "text (default), json or csv; of cuts also html", '\0',
           namesOf(kCutFormats)},
          {"keep-from", "LENGTH",
           "how long a leftover is worth keeping, in a summary (default: 500)"},
          {"where", nullptr, "add the line that each value was read from; mark carried ones"},
      },
      run,
  };
}

}  // namespace desk::commands
