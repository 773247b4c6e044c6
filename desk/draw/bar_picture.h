// Equal bars of a drawing: a line about them, the bar itself, its pieces' texts, what is odd.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/bar_lines.h"
#include "desk/draw/bar_texts.h"
#include "desk/draw/lanes.h"
#include "desk/draw/sheet.h"
#include "desk/draw/svg_canvas.h"
#include "desk/draw/work_marks.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

class BarPicture {
 public:
  /// Group and marks must outlive the picture.
  BarPicture(const BarGroup& group, const Scale& scale, const WorkMarks& marks);

  /// "3 x  Bars 1, 2, 5  ·  outer frame  ·  P65", as far as there is room for it.
  const std::string& title() const { return title_; }

  /// With the gap to the next bar, mm. Always less than a page has below its heading.
  double height() const;

  /// Draws the bar from `top` down, mm. What is drawn goes by the numbers of the group's first bar.
  void draw(SvgCanvas& canvas, double top) const;

 private:
  void draw(SvgCanvas& canvas, double top, std::size_t piece) const;
  void drawTitle(SvgCanvas& canvas, double top) const;
  void drawStock(SvgCanvas& canvas, double top) const;
  void drawRest(SvgCanvas& canvas, double baseline) const;
  void drawBreak(SvgCanvas& canvas, double x, double bottom) const;
  void drawOutline(SvgCanvas& canvas, double top, const PiecePlace& piece) const;
  void drawSigns(SvgCanvas& canvas, double top, std::size_t piece) const;
  void drawTexts(SvgCanvas& canvas, double top, std::size_t piece) const;
  void drawLines(SvgCanvas& canvas, double top) const;

  double lane() const { return bar_.width / drawn_.scale.across; }
  double band() const;
  double aboveBand() const;
  double belowBand() const;
  double laneBottom(std::size_t lane, double top) const;
  double length(double onBar) const { return onBar / drawn_.scale.along; }
  double stockLength() const;
  std::string sum() const;
  std::string nameOf(std::size_t index) const;
  Subject subjectOf(std::size_t piece) const;
  Subject subjectOf(std::size_t piece, std::size_t work) const;

  const BarGroup& group_;
  const BarPlace& bar_;
  const WorkMarks& marks_;
  LongBar drawn_;
  Lanes lanes_;
  std::vector<Sign> signs_;  ///< by pieces
  BarTexts texts_;
  std::string title_;
  BarLines lines_;
};

}  // namespace desk::draw
