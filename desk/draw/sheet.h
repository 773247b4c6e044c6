// The sheet that bars are drawn on: its pages, the scale, how much room texts take, the legend.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/svg_canvas.h"
#include "desk/draw/work_marks.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

/// A4 across, mm.
constexpr double kPageWidth = 297.0;
constexpr double kPageHeight = 210.0;
constexpr double kMargin = 10.0;
constexpr double kRoom = kPageWidth - 2.0 * kMargin;  ///< for texts, mm

/// Where bars begin, right of the names of their sides, and how long they may be, mm on paper.
constexpr double kBarLeft = kMargin + 10.0;
constexpr double kBarRoom = kPageWidth - kMargin - kBarLeft;
constexpr double kBetweenLanes = 0.8;

/// Where blocks come to lie.
struct Pages {
  std::vector<double> tops;  ///< of each block, from the top of the drawing
  int count = 1;
  double height = 0.0;  ///< of the drawing: whole pages, or as much as the blocks of one page take
};

/// Places blocks of these heights, none higher than a page, one below the other so that none is cut
/// by the end of a page.
/// @param room where each page has room, from its top
Pages paginate(const std::vector<double>& heights, double room);

/// Two scales, as profiles are some hundred times longer than wide: "1:25 along, 1:8 across". Both
/// are those of all bars of a job.
struct Scale {
  double along = 1.0;   ///< millimetres of the bar that are one on paper
  double across = 1.0;  ///< the same across the profile; never more than `along`
};

/// The largest usual scale at which the longest bar that is in trade is no longer than `kBarRoom`
/// on paper, and the widest profile gets lanes that works have room in.
Scale scaleFor(const std::vector<BarPlace>& bars);

/// "1:25 along, 1:8 across"
std::string scaleText(const Scale& scale);

/// How a bar is drawn that may be too long for the scale of the job.
struct LongBar {
  Scale scale;            ///< of its own where its pieces alone are too long
  bool isBroken = false;  ///< whether what is left over is drawn shorter, with a gap
};

LongBar drawnOnPaper(const BarPlace& bar, const Scale& ofJob);

/// How wide `text` is at most, mm. Viewers choose the face, so this is on the wide side.
/// @param text UTF-8 that XML can hold
double widthInMm(const std::string& text, const Lettering& lettering);

/// `text` when it fits into `room` mm, else its beginning and an ellipsis; empty when not even that
/// fits.
std::string truncatedToMm(const std::string& text, double room, const Lettering& lettering);

/// The signs of the works with their names, in a few lines. What has no room is counted.
class Legend {
 public:
  /// @param marks must outlive the legend
  /// @param width that it may take, mm
  Legend(const WorkMarks& marks, double width);

  double height() const;

  /// @param top baseline of its first line
  void draw(SvgCanvas& canvas, double top) const;

 private:
  struct Entry {
    std::string text;
    std::string name;
    double x;
    int line;
  };

  const WorkMarks& marks_;
  std::vector<Entry> entries_;
  std::size_t others_ = 0;  ///< works without an entry
};

}  // namespace desk::draw
