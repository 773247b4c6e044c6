#include "desk/draw/scale.h"

#include <algorithm>

namespace desk::draw {

namespace {

constexpr double kBand = 9.0;          ///< of the widest profile, mm on paper, when drawn higher
constexpr double kHighestBand = 30.0;  ///< when drawn as it is

/// The smallest usual denominator that is not below `least`.
double usual(double least) {
  constexpr double kSteps[] = {1.0, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 8.0};
  double decade = 1.0;
  while (decade * 10.0 < least) decade *= 10.0;
  for (const double step : kSteps) {
    if (step * decade >= least) return step * decade;
  }
  return 10.0 * decade;
}

}  // namespace

Scale scaleFor(const std::vector<BarPlace>& bars, double paperLength) {
  double longest = 1.0;
  double widest = 1.0;
  for (const BarPlace& bar : bars) {
    longest = std::max(longest, bar.extent());
    widest = std::max(widest, bar.width);
  }
  Scale scale;
  scale.along = usual(std::max(longest / paperLength, widest / kHighestBand));
  scale.across = std::min(scale.along, usual(widest / kBand));
  return scale;
}

}  // namespace desk::draw
