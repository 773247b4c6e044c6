#include "desk/draw/legend.h"

#include "desk/base/text.h"
#include "desk/draw/lettering.h"
#include "desk/draw/pages.h"

namespace desk::draw {

namespace {

constexpr double kLine = 4.2;  ///< from one baseline to the next
constexpr int kMostLines = 6;
constexpr double kLongestName = 65.0;

/// The sign of an entry and the gap behind its text.
constexpr double kExtra = 8.0;

}  // namespace

Legend::Legend(const WorkMarks& marks, double width) : marks_(marks), others_(marks.others()) {
  double x = 0.0;
  int line = 0;
  for (const std::string& name : marks.names()) {
    const std::string text = fitted(xmlText(name), kLongestName, kLabel);
    const double needed = kExtra + widthOf(text, kLabel);
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
    marks_.draw(canvas, {kMargin + entry.x + 0.8, y - 0.9}, entry.name);
    canvas.text({kMargin + entry.x + 2.4, y}, entry.text, "legend");
  }
  if (others_ == 0 || entries_.empty()) return;
  canvas.text({kMargin, top + (entries_.back().line + 1) * kLine},
              "and " + std::to_string(others_) + " more works", "legend");
}

}  // namespace desk::draw
