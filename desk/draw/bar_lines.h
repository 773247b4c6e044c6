// The lines below a bar: how it is drawn, what had no room at it, what is odd about it.
#pragma once

#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/lanes.h"

namespace desk::draw {

/// Each as wide as there is room, at most. The list ends after a few lines and says so.
struct BarLines {
  std::vector<std::string> list;
  std::vector<std::string> remarks;

  double count() const { return static_cast<double>(list.size() + remarks.size()); }
};

/// @param how it is drawn, in lines that come first
/// @param entries texts of pieces, see BarTexts
/// @param signs of the works that have one
BarLines linesBelow(const BarGroup& group, const std::vector<std::string>& how,
                    const std::vector<std::string>& entries, const std::vector<Sign>& signs);

}  // namespace desk::draw
