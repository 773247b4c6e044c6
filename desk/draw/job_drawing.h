// A job's bars as pictures: all of them on sheets of paper, or one by one for a page.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/bar_picture.h"
#include "desk/draw/sheet.h"
#include "desk/draw/work_marks.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

/// What the drawing says above the bars.
struct JobHeading {
  std::string name;    ///< of the job
  std::string source;  ///< where it was read
  std::string unit;    ///< of its lengths; empty: mm
};

struct Picture {
  std::string svg;
  double height = 0.0;  ///< mm
};

/// Draws bars, equal ones once if so wished. The same job gives the same bytes. Nothing changes
/// after the constructor, so that one drawing answers as often as it is asked.
///
/// Everything drawn of a bar, a piece or a work is an element with the attribute
///   data-bar="B"          a <g>: title, bar, pieces, what is listed and odd
///   data-piece="B.P"      a <g> inside it: outline, works, texts at the piece
///   data-work="B.P.W"     a <path> inside it: the sign of the work
/// and a <title> as first child, which tells its values. B is the bar's place in the job, P the
/// piece's place on the bar, W the work's place at the piece, all from 1. Where a group holds
/// several bars these are the places of its first one: whoever looks for a piece of another bar
/// finds it under the first bar's B with the same P and W. Works that lie off their piece have no
/// element; the title of the piece tells them.
class JobDrawing {
 public:
  /// @param bars laid out and judged, see judgedBars; they must outlive the drawing
  JobDrawing(JobHeading heading, const std::vector<BarPlace>& bars, EqualBars equal);
  JobDrawing(const JobDrawing&) = delete;
  JobDrawing& operator=(const JobDrawing&) = delete;

  /// What is drawn once, from the top down. A group's bars tell their places by `number`.
  const std::vector<BarGroup>& groups() const { return groups_; }

  /// "3 x  Bars 1, 2, 5  ·  outer frame  ·  P65"
  const std::string& titleOf(std::size_t group) const { return pictures_[group].title(); }

  /// Size of the picture of one group, which is that of all groups in width. Its unit is a
  /// millimetre on the paper of `sheets`; scale and signs are the same there.
  double width() const { return kPageWidth; }
  double heightOf(std::size_t group) const { return pictures_[group].height(); }

  /// One group alone: an <svg> of that size, on no background, made of svg, title, g, rect, line,
  /// polygon, path and text. It holds no style sheet, style attribute, script, link or id: colours
  /// and sizes are presentation attributes, before which a page's own rules go by the same classes
  /// as in looks.h.
  std::string group(std::size_t index) const;

  /// The signs of all works with their names, in the same form; empty when there are none.
  std::string legend() const;

  /// All groups in pages of A4 across, one below the other: a browser prints each on a sheet of its
  /// own. A job that needs less than a page gets a lower picture.
  Picture sheets() const;

 private:
  std::string title() const;
  std::string facts() const;
  void drawHeading(SvgCanvas& canvas, int page, int count) const;

  JobHeading heading_;
  const std::vector<BarPlace>& bars_;
  std::vector<BarGroup> groups_;
  WorkMarks marks_;
  Legend legend_;
  Scale scale_;
  std::vector<BarPicture> pictures_;
};

}  // namespace desk::draw
