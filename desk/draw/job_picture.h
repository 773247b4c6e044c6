// A job's bars as one picture.
#pragma once

#include <string>
#include <vector>

#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;

/// What the drawing says above the bars.
struct JobHeading {
  std::string name;    ///< of the job
  std::string source;  ///< where it was read
  std::string unit;    ///< of its lengths; empty: mm
};

struct JobPicture {
  std::string svg;
  double height = 0.0;  ///< mm
};

/// Draws the bars as SVG in pages of A4 across, one below the other: a browser prints each on a
/// sheet of its own. A job that needs less than a page gets a lower picture. The same job gives the
/// same bytes.
JobPicture drawJob(const JobHeading& heading, const std::vector<BarPlace>& bars);

}  // namespace desk::draw
