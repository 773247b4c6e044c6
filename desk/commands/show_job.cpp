#include "desk/commands/show_job.h"

#include <cstdio>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/numbers.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/job/job_file.h"
#include "desk/job/selection.h"
#include "desk/show/cut_list.h"
#include "desk/show/job_summary.h"
#include "desk/show/pieces.h"

namespace desk::commands {

namespace {

using show::JobSummary;
using Pieces = std::vector<show::PieceFact>;

/// How an answer of this kind is written.
template <class Answer>
struct Format {
  const char* name;
  std::string (*write)(const Answer&);
};

constexpr Format<JobSummary> kSummaryFormats[] = {
    {"text", [](const JobSummary& summary) { return summaryText(summary, terminalOf(stdout)); }},
    {"json", show::summaryJson},
    {"csv", show::summaryCsv}};

constexpr Format<Pieces> kPiecesFormats[] = {
    {"text", [](const Pieces& pieces) { return piecesText(pieces, terminalOf(stdout)); }},
    {"json", show::piecesJson},
    {"csv", show::piecesCsv}};

double lengthOf(const std::string& text) {
  double length = 0.0;
  bool whole = false;
  if (numberOf(text, length, whole) && whole && length >= 0.0) return length;
  throw Error(kExitUsage, "show: --keep-from is a length, not '" + text + "'");
}

/// The bars and pieces that are asked for. Throws Error where the job has none of them.
job::Selection selectionOf(const Arguments& arguments, const CheckedJob& job) {
  job::Selection selection{arguments.value("bar"), arguments.value("barcode")};
  job::requireAny("show", job.session().job().job, selection);
  return selection;
}

}  // namespace

CheckedJob::CheckedJob(const std::string& file) {
  Progress progress;
  progress.show("loading " + escapeControls(job::shownName(file)));
  session_.check(file);
  const check::Report& report = session_.report();
  if (!report.unreadable.empty()) throw Error(kExitIoError, report.unreadable.front().reason);
  if (session_.loads()) return;
  throw job::cannotLoad(file, session_.whyNot());
}

int showSummary(const Arguments& arguments) {
  const auto& format =
      choice(arguments.value("format", "text"), "show: --format of a summary", kSummaryFormats);
  JobSummary summary(arguments.has("keep-from") ? lengthOf(arguments.value("keep-from"))
                                                : show::kKeepFrom);
  for (const std::string& file : arguments.operands) {
    summary.add(CheckedJob(file).session());
  }
  std::fputs(format.write(summary).c_str(), stdout);
  return kExitOk;
}

int showPieces(const Arguments& arguments) {
  const auto& format =
      choice(arguments.value("format", "text"), "show: --format of pieces", kPiecesFormats);
  const CheckedJob job(arguments.operands.front());
  std::fputs(format.write(show::piecesOf(job.session().job(), selectionOf(arguments, job))).c_str(),
             stdout);
  return kExitOk;
}

int printCutList(const Arguments& arguments) {
  const CheckedJob job(arguments.operands.front());
  std::fputs(show::cutListHtml(job.session(), selectionOf(arguments, job)).c_str(), stdout);
  return kExitOk;
}

}  // namespace desk::commands
