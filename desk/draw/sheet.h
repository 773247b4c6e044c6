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

/// Where blocks come to lie.
struct Pages {
  std::vector<double> tops;  ///< of each block, from the top of the drawing
  int count = 1;
  double height = 0.0;  ///< of the drawing: whole pages, or as much as the blocks of one page take
};

/// Places blocks of these heights, none higher than a page, one below the other so that none is cut
/// by the end of a page.
/// @param first where the first page has room, from its top
/// @param others the same of all other pages
Pages paginate(const std::vector<double>& heights, double first, double others);

/// Two scales, as profiles are some hundred times longer than wide: "1:25 along, 1:8 across". Both
/// are those of all bars of a job.
struct Scale {
  double along = 1.0;   ///< millimetres of the bar that are one on paper
  double across = 1.0;  ///< the same across the profile; never more than `along`
};

/// The largest usual scale at which the longest bar is no longer than `paperLength` mm on paper and
/// the widest profile gets a band that texts and works have room in.
Scale scaleFor(const std::vector<BarPlace>& bars, double paperLength);

/// How a text is set.
struct Lettering {
  double size;  ///< height of the em square, mm
  bool bold;
};

constexpr Lettering kName{5.0, true};  ///< of the job
constexpr Lettering kTitle{3.2, true};
constexpr Lettering kSum{3.0, false};
constexpr Lettering kNumber{3.2, true};
constexpr Lettering kLabel{2.6, false};
constexpr Lettering kRemark{2.8, true};

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
