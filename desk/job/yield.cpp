#include "desk/job/yield.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "desk/base/numbers.h"

namespace desk::job {

bool Yield::add(const BarPlace& bar) {
  if (!bar.isKnown() || !bar.fits()) return false;
  length += bar.length;
  used += bar.used;
  return true;
}

void Yield::add(const Yield& other) {
  length += other.length;
  used += other.used;
}

double Yield::percent() const {
  return std::strtod(text().c_str(), nullptr);
}

std::string Yield::text() const {
  if (length <= 0.0) return "";
  char text[32] = "";
  std::snprintf(text, sizeof text, "%.1f %%", 100.0 * used / length);
  return text;
}

Yield yieldOf(const BarPlace& bar) {
  Yield yield;
  yield.add(bar);
  return yield;
}

std::string unknownText(const BarPlace& bar) {
  return bar.unknown == 0 ? "" : std::to_string(bar.unknown) + " of them of unknown length";
}

std::string statedLeftOver(const BarPlace& bar) {
  const std::string& stated = bar.bar->BarLeftLength;
  double number = 0.0;
  bool whole = false;
  const bool isClose =
      numberOf(stated, number, whole) && whole && std::abs(number - bar.leftOver()) < 1.0;
  return isClose ? "" : stated;
}

double certainLeftOver(const BarPlace& bar) {
  if (!Yield().add(bar)) return 0.0;
  double stated = 0.0;
  bool whole = false;
  const bool isStated = numberOf(bar.bar->BarLeftLength, stated, whole) && stated >= 0.0;
  const double left = std::max(bar.leftOver(), 0.0);
  return isStated ? std::min(left, stated) : left;
}

}  // namespace desk::job
