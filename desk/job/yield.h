// How much of bars becomes pieces, and what is left of them.
#pragma once

#include <string>

#include "desk/job/bar_layout.h"

namespace desk::job {

/// Sums up bars. Those whose pieces do not fit, or where a length is no plain number, count for
/// nothing.
struct Yield {
  double length = 0.0;  ///< of the bars
  double used = 0.0;    ///< what pieces take of it

  /// Returns whether the bar counts.
  bool add(const BarPlace& bar);
  void add(const Yield& other);

  /// Percent, to a tenth; 0 where no bar counts.
  double percent() const;
  /// "95.4 %"; empty where no bar counts
  std::string text() const;
};

Yield yieldOf(const BarPlace& bar);

/// "2 of them of unknown length", to be put behind the number of pieces; empty where all are known.
std::string unknownText(const BarPlace& bar);

/// What the job says is left over of the bar, where that is at least 1 mm off what the lengths say;
/// otherwise empty.
std::string statedLeftOver(const BarPlace& bar);

/// How long the rest of the bar is for certain: what the lengths leave, or what the job says where
/// that is less, as it knows the saw's kerf. 0 for a bar that counts for no yield.
double certainLeftOver(const BarPlace& bar);

}  // namespace desk::job
