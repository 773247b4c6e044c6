// Which sign stands for which work.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/svg_canvas.h"
#include "desk/draw/work_marks.h"

namespace desk::draw {

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
