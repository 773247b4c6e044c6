#include "desk/draw/lanes.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "desk/base/numbers.h"
#include "model/key_table.h"

namespace desk::draw {

namespace {

constexpr double kNoSide = 1e9;  ///< behind all sides
constexpr double kLeast = 0.5;   ///< from the middle of a sign to the edge of the lane, mm
constexpr double kStep = 0.15;   ///< in which room is looked for, mm

double sideOf(const WorkPlace& place) {
  const double side = place.work->ProfiLav;
  const bool isOne = model::rangeOf(model::TextForm::Side).holds(side) && side == std::floor(side);
  return isOne ? side : kNoSide;
}

/// One lane while it is filled from left to right.
class Lane {
 public:
  explicit Lane(double height) : height_(height) {}

  /// Moves a sign up or down to where it covers no other one. Returns whether there is room.
  bool place(Point& at) {
    const auto isBehind = [&](const Point& sign) { return sign.x <= at.x - kSign; };
    near_.erase(std::remove_if(near_.begin(), near_.end(), isBehind), near_.end());
    const double highest = std::max(height_ - kLeast, height_ / 2.0);
    const double wanted = std::clamp(at.y, height_ - highest, highest);
    const int steps = static_cast<int>(height_ / kStep);
    for (int step = 0; step <= steps; ++step) {
      const double off = step * kStep;
      for (const double y : {wanted + off, wanted - off}) {
        if (y > highest || y < height_ - highest || isTaken(y)) continue;
        at.y = y;
        near_.push_back(at);
        return true;
      }
    }
    return false;
  }

 private:
  bool isTaken(double y) const {
    return std::any_of(near_.begin(), near_.end(),
                       [&](const Point& sign) { return std::abs(sign.y - y) < kSign; });
  }

  double height_;
  std::vector<Point> near_;  ///< those that the next one may cover
};

}  // namespace

Lanes::Lanes(const BarPlace& bar) {
  for (const PiecePlace& piece : bar.pieces) {
    for (const WorkPlace& work : piece.works) {
      if (!work.isDrawn()) continue;
      const auto at = std::lower_bound(sides_.begin(), sides_.end(), sideOf(work));
      if (at == sides_.end() || *at != sideOf(work)) sides_.insert(at, sideOf(work));
    }
  }
}

std::string Lanes::nameOf(std::size_t lane) const {
  if (sides_.empty()) return "";
  return "side " + (sides_[lane] == kNoSide ? std::string("?") : hundredthsText(sides_[lane]));
}

std::size_t Lanes::laneOf(const WorkPlace& work) const {
  const auto at = std::lower_bound(sides_.begin(), sides_.end(), sideOf(work));
  return static_cast<std::size_t>(at - sides_.begin());
}

std::vector<Sign> placeSigns(const BarPlace& bar, const Lanes& lanes, double along, double across) {
  std::vector<Sign> wanted;
  for (std::size_t i = 0; i < bar.pieces.size(); ++i) {
    const std::vector<WorkPlace>& works = bar.pieces[i].works;
    for (std::size_t k = 0; k < works.size(); ++k) {
      if (!works[k].isDrawn()) continue;
      const Point at{works[k].at.x / along, works[k].at.y / across};
      wanted.push_back({i, k, lanes.laneOf(works[k]), at});
    }
  }
  std::stable_sort(wanted.begin(), wanted.end(),
                   [](const Sign& one, const Sign& other) { return one.at.x < other.at.x; });
  std::vector<Lane> filled(lanes.count(), Lane(bar.width / across));
  std::vector<Sign> signs;
  for (Sign& sign : wanted) {
    if (filled[sign.lane].place(sign.at)) signs.push_back(sign);
  }
  std::sort(signs.begin(), signs.end(), [](const Sign& one, const Sign& other) {
    return std::tie(one.piece, one.work) < std::tie(other.piece, other.work);
  });
  return signs;
}

}  // namespace desk::draw
