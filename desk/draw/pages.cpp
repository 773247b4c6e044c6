#include "desk/draw/pages.h"

#include <cmath>

namespace desk::draw {

Pages paginate(const std::vector<double>& heights, double first, double others) {
  Pages pages;
  double top = first;
  for (const double height : heights) {
    if (top + height > pages.count * kPageHeight - kMargin) {
      top = pages.count++ * kPageHeight + others;
    }
    pages.tops.push_back(top);
    top += height;
  }
  pages.height = pages.count == 1 ? std::ceil(top + kMargin) : pages.count * kPageHeight;
  return pages;
}

}  // namespace desk::draw
