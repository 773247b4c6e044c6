// cusdesk draw: the bars of a job with their pieces, as a picture.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/base/output.h"
#include "desk/base/table.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/draw/job_drawing.h"
#include "desk/draw/summary.h"
#include "desk/job/job_file.h"
#include "desk/job/selection.h"
#include "desk/panel/other_programs.h"

namespace desk::commands {

namespace {

/// Where a picture goes: the name's ending says in which form.
struct Target {
  std::string file;
  bool isPng = false;
};

Target targetOf(const Arguments& arguments) {
  Target target;
  target.file = arguments.value("output");
  const std::string ending = lowerCase(std::filesystem::path(target.file).extension().string());
  target.isPng = ending == ".png";
  if (!target.isPng && ending != ".svg" && target.file != "-") {
    throw Error(kExitUsage,
                "draw: say where to draw, with '-o FILE.svg', '-o FILE.png' or '-o -' for SVG on "
                "standard output");
  }
  return target;
}

/// As fine as a good screen, as far as the converter draws so many lines.
int dotsPerInch(double height) {
  constexpr double kMostLines = 32767.0;
  constexpr double kInch = 25.4;
  constexpr double kFinest = 192.0;
  constexpr double kCoarsest = 72.0;
  const double dots = std::min(kFinest, kMostLines * kInch / height);
  if (dots >= kCoarsest) return static_cast<int>(dots);
  throw Error(kExitIoError, "draw: too many bars for a PNG; draw an SVG, or some bars with --bar");
}

void write(const draw::Picture& picture, const Target& target) {
  writeFile(target.file,
            target.isPng ? panel::pngOf(picture.svg, dotsPerInch(picture.height)) : picture.svg);
}

void printSummary(const std::vector<draw::BarPlace>& bars, const job::Oddities& header) {
  std::fputs(tableText(draw::summaryTable(bars), false, terminalOf(stdout)).c_str(), stdout);
  std::fputs("\n", stdout);
  for (const std::string& line : draw::findingLines(bars, header)) {
    std::printf("%s\n", escapeControls(line).c_str());
  }
  std::printf("%s\n", draw::totalText(bars).c_str());
}

/// The exit code; says on standard error what is left out, with a hint behind it.
int answerFor(const std::vector<draw::BarPlace>& bars, const std::string& hint) {
  const std::string leftOut = draw::leftOutText(bars);
  if (leftOut.empty()) return kExitOk;
  log("draw: " + leftOut + " left out of the picture" + hint);
  return kExitFindings;
}

int run(const Arguments& arguments) {
  const Target target = targetOf(arguments);
  const std::string& file = arguments.operands.front();
  std::optional<Progress> progress(std::in_place);
  progress->show("drawing " + escapeControls(job::shownName(file)));
  applyGlobalOptions(arguments, RootUse::Reading);
  const DATA_T read =
      job::readJob(file, arguments.has("verbose") ? StdoutRedirect::To::StandardError
                                                  : StdoutRedirect::To::Nowhere);
  const model::JobFormat format = job::formatOf(file);
  const job::Selection selection{arguments.value("bar"), ""};
  job::requireAny("draw", read, selection);
  const std::vector<draw::BarPlace> bars = job::judgedBars(read, format, selection);
  const std::string name = escapeControls(job::shownName(file));
  const std::string source = std::filesystem::path(job::shownName(file)).filename().string();
  const auto equal = arguments.has("each") ? draw::EqualBars::Each : draw::EqualBars::Once;
  write(draw::JobDrawing({read.Name, source, read.Unit}, bars, equal).sheets(), target);
  progress.reset();
  const bool isSilent = target.file == kStandardStream || arguments.has("quiet");
  if (!isSilent) printSummary(bars, job::headerOddities(read, format));
  return answerFor(bars, isSilent ? "; cusdesk check " + name + " tells which" : "");
}

}  // namespace

Command drawCommand() {
  return {
      "draw",
      "FILE",
      "draw the bars of a job file with their pieces, cuts and works",
      "  cusdesk draw window.json -o job.svg     for a browser, which prints it on A4\n"
      "  cusdesk draw window.xml -o bar7.png --bar 7  one bar, as a picture for a message\n",
      {
          {"output", "FILE", "where to draw: a .svg or .png file; '-' is SVG on standard output",
           'o'},
          {"bar", "NUMBER", "only the bars with this number"},
          {"each", nullptr, "draw every bar, also those that are equal"},
      },
      run,
  };
}

}  // namespace desk::commands
