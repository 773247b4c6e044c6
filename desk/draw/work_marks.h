// The signs that tell works of different names apart.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/svg_canvas.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

/// Gives each name of a work a sign, in the order in which they turn up. Names behind the last sign
/// share one more.
class WorkMarks {
 public:
  explicit WorkMarks(const std::vector<BarGroup>& groups);

  /// The names that have a sign of their own, in its order.
  const std::vector<std::string>& names() const { return names_; }
  /// How many names share the last one.
  std::size_t others() const { return others_; }

  /// @param work whose sign it is; nullptr: it only tells what the sign means
  void draw(SvgCanvas& canvas, const Point& at, const std::string& name,
            const Subject* work = nullptr) const;

  /// The sign that the other names share.
  void drawOther(SvgCanvas& canvas, const Point& at) const;

 private:
  std::map<std::string, std::size_t> signs_;
  std::vector<std::string> names_;
  std::size_t others_ = 0;
};

}  // namespace desk::draw
