// Equal bars of a drawing: a line about them, the bar itself, its pieces' texts, what is odd.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/piece_label.h"
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

  /// With the gap to the next bar, mm. Always less than half a page.
  double height() const;

  /// Draws the bar from `top` down, mm. What is drawn goes by the numbers of the group's first bar.
  void draw(SvgCanvas& canvas, double top) const;

 private:
  void drawTitle(SvgCanvas& canvas, double top) const;
  void drawStock(SvgCanvas& canvas, double bottom) const;
  void drawPiece(SvgCanvas& canvas, std::size_t index, double bottom) const;
  void drawLabel(SvgCanvas& canvas, std::size_t index, double bottom) const;
  void drawLines(SvgCanvas& canvas, double top) const;

  double band() const { return bar_.width / scale_.across; }
  double length(double onBar) const { return onBar / scale_.along; }
  /// Where a point of the bar lies on paper, whose band ends at `bottom`.
  Point onPaper(const Point& point, double bottom) const;
  std::string sum() const;
  std::string nameOf(std::size_t index) const;
  Subject subjectOf(std::size_t piece) const;
  Subject subjectOf(std::size_t piece, std::size_t work) const;
  std::vector<std::string> barCodeLines() const;

  const BarGroup& group_;
  const BarPlace& bar_;
  std::string title_;
  Scale scale_;
  const WorkMarks& marks_;
  std::vector<PieceLabel> labels_;
  double labelHeight_ = 1.0;          ///< what they take below the band
  std::vector<std::string> list_;     ///< what had no room at the pieces
  std::vector<std::string> remarks_;  ///< what is odd
};

}  // namespace desk::draw
