// How large a job is drawn.
#pragma once

#include <vector>

#include "desk/draw/bar_layout.h"

namespace desk::draw {

/// Two scales, as profiles are some hundred times longer than wide: "1:25 along, 1:8 across". Both
/// are those of all bars of a job.
struct Scale {
  double along = 1.0;   ///< millimetres of the bar that are one on paper
  double across = 1.0;  ///< the same across the profile; never more than `along`
};

/// The largest usual scale at which the longest bar is no longer than `paperLength` mm on paper and
/// the widest profile gets a band that texts and works have room in.
Scale scaleFor(const std::vector<BarPlace>& bars, double paperLength);

}  // namespace desk::draw
