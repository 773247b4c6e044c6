#include "desk/draw/sheet.h"

#include <algorithm>
#include <cmath>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/lanes.h"
#include "desk/draw/summary.h"
#include "part/cell_text.h"

namespace desk::draw {

namespace {

constexpr double kLane = 9.0;          ///< of the widest profile, mm on paper, when drawn higher
constexpr double kHighestLane = 30.0;  ///< when drawn as it is
constexpr double kLanes = 28.0;        ///< the same of all lanes of a bar together
constexpr double kHighestLanes = 40.0;
constexpr double kBrokenRest = 16.0;  ///< what is left over of a broken bar

/// The smallest usual denominator that is not below `least`.
double usual(double least) {
  constexpr double kSteps[] = {1.0, 1.2, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 8.0};
  double decade = 1.0;
  while (decade * 10.0 < least) decade *= 10.0;
  for (const double step : kSteps) {
    if (step * decade >= least) return step * decade;
  }
  return 10.0 * decade;
}

/// The table part measures in whole units.
constexpr double kUnits = 100.0;  ///< in a millimetre

Table::Font fontOf(const Lettering& lettering) {
  return {static_cast<int>(std::lround(lettering.size * kUnits)), lettering.bold};
}

constexpr double kLine = 4.2;  ///< from one baseline to the next
constexpr int kMostLines = 4;
constexpr double kLongestEntry = 65.0;

constexpr double kIndent = 2.6;  ///< from an entry's sign to its text

/// The sign of an entry and the gap behind its text.
constexpr double kExtra = 8.0;

}  // namespace

Pages paginate(const std::vector<double>& heights, double room) {
  Pages pages;
  double top = room;
  for (const double height : heights) {
    if (top + height > pages.count * kPageHeight - kMargin) {
      top = pages.count++ * kPageHeight + room;
    }
    pages.tops.push_back(top);
    top += height;
  }
  pages.height = pages.count == 1 ? std::ceil(top + kMargin) : pages.count * kPageHeight;
  return pages;
}

Scale scaleFor(const std::vector<BarPlace>& bars) {
  double longest = 0.0;  // of those that are in trade
  double extent = 1.0;   // of all
  double widest = 1.0;
  double lanes = 1.0;  // of one bar together
  for (const BarPlace& bar : bars) {
    for (const double length : {bar.extent(), bar.used}) {
      if (length <= kLongestBar) longest = std::max(longest, length);
    }
    extent = std::max(extent, bar.extent());
    widest = std::max(widest, bar.width);
    lanes = std::max(lanes, bar.width * static_cast<double>(Lanes(bar).count()));
  }
  if (longest == 0.0) longest = extent;
  Scale scale;
  scale.along = usual(std::max({longest / kBarRoom, widest / kHighestLane, lanes / kHighestLanes}));
  scale.across = std::min(scale.along, usual(std::max(widest / kLane, lanes / kLanes)));
  return scale;
}

std::string scaleText(const Scale& scale) {
  if (scale.along == scale.across) return "1:" + hundredthsText(scale.along);
  return "1:" + hundredthsText(scale.along) + " along, 1:" + hundredthsText(scale.across) +
         " across";
}

LongBar drawnOnPaper(const BarPlace& bar, const Scale& ofJob) {
  LongBar drawn{ofJob};
  if (bar.extent() <= kBarRoom * ofJob.along) return drawn;
  const bool leavesSome = bar.length > bar.used;
  const double room = kBarRoom - (leavesSome ? kBrokenRest : 0.0);
  if (bar.used > room * ofJob.along) drawn.scale.along = usual(bar.used / room);
  drawn.isBroken = bar.length > kBarRoom * drawn.scale.along;
  return drawn;
}

double widthInMm(const std::string& text, const Lettering& lettering) {
  return Table::widthOf(text, fontOf(lettering)) / kUnits;
}

std::string truncatedToMm(const std::string& text, double room, const Lettering& lettering) {
  const int width = static_cast<int>(std::max(room, 0.0) * kUnits);
  return Table::fitText(text, width, fontOf(lettering));
}

Legend::Legend(const WorkMarks& marks, double width) : marks_(marks), others_(marks.others()) {
  double x = 0.0;
  int line = 0;
  for (const std::string& name : marks.names()) {
    const std::string text = truncatedToMm(xmlText(workName(name)), kLongestEntry, kLabel);
    const double needed = kExtra + widthInMm(text, kLabel);
    if (x + needed > width) {
      x = 0.0;
      ++line;
    }
    if (line == kMostLines) break;
    entries_.push_back({text, name, x, line});
    x += needed;
  }
  others_ += marks.names().size() - entries_.size();
}

double Legend::height() const {
  if (entries_.empty()) return 0.0;
  return (entries_.back().line + (others_ > 0 ? 2 : 1)) * kLine;
}

void Legend::draw(SvgCanvas& canvas, double top) const {
  for (const Entry& entry : entries_) {
    const double y = top + entry.line * kLine;
    marks_.draw(canvas, {kMargin + entry.x + kSign / 2.0, y - 0.9}, entry.name);
    canvas.text({kMargin + entry.x + kIndent, y}, entry.text, "legend");
  }
  if (others_ == 0 || entries_.empty()) return;
  const double y = top + (entries_.back().line + 1) * kLine;
  const bool shareOne = marks_.others() > 0;
  if (shareOne) marks_.drawOther(canvas, {kMargin + kSign / 2.0, y - 0.9});
  canvas.text({kMargin + (shareOne ? kIndent : 0.0), y},
              "and " + std::to_string(others_) + " more works", "legend");
}

}  // namespace desk::draw
