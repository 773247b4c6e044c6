// The pages of a long drawing, one below the other.
#pragma once

#include <vector>

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

}  // namespace desk::draw
