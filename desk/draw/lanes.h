// The lanes of a bar's picture, one for each side that is worked on, and the signs in them.
#pragma once

#include <string>
#include <vector>

#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;

/// A sign takes a square of this size, mm on paper.
constexpr double kSign = 1.6;

/// The sides of a bar that works which are drawn are on, in rising order; what is no number of a
/// side comes last and shares a lane. A bar without works has one lane.
class Lanes {
 public:
  explicit Lanes(const BarPlace& bar);

  std::size_t count() const { return sides_.empty() ? 1 : sides_.size(); }
  /// "side 1", "side ?"; empty where there are no works
  std::string nameOf(std::size_t lane) const;
  std::size_t laneOf(const WorkPlace& work) const;

 private:
  std::vector<double> sides_;
};

/// Where the sign of a work comes to lie.
struct Sign {
  std::size_t piece;  ///< on the bar, from 0
  std::size_t work;   ///< at the piece, from 0
  std::size_t lane;
  Point at;  ///< mm on paper, from the bar's left end and the lower edge of the lane up
};

/// The signs of the works that are drawn, by pieces. They stand at their X and, where none is there
/// yet, at their Y; else as near above or below it as no other one is covered. Works that find no
/// room have none.
/// @param along millimetres of the bar that are one on paper
/// @param across the same across the profile
std::vector<Sign> placeSigns(const BarPlace& bar, const Lanes& lanes, double along, double across);

}  // namespace desk::draw
