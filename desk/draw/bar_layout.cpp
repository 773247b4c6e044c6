#include "desk/draw/bar_layout.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "desk/base/numbers.h"

namespace desk::draw {

namespace {

/// What no bar and no profile exceeds, mm. Keeps sums finite.
constexpr double kLongest = 1e6;

/// Far below what a saw can do, far above what sums and tangents are rounded by, mm.
constexpr double kTolerance = 1e-6;

constexpr double kUsualWidth = 60.0;
constexpr double kSquare = 90.0;

/// How far a cut at this angle goes along the bar while it crosses the profile.
double setBack(double angle, double width) {
  constexpr double kPi = 3.14159265358979323846;
  return width / std::tan(angle * kPi / 180.0);
}

/// Lays out one bar, from left to right.
class Layout {
 public:
  explicit Layout(const BAR_T& bar) : place_{&bar} {}

  BarPlace run() {
    const BAR_T& bar = *place_.bar;
    if (!read(bar.length, kLongest, place_.length)) note(Oddity::NoLength);
    if (!read(bar.MaxY, kLongest, place_.width)) {
      note(Oddity::NoWidth);
      place_.width = kUsualWidth;
    }
    if (bar.piece.empty()) note(Oddity::NoPieces);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) add(piece);
    if (place_.length > 0.0 && place_.used > place_.length + kTolerance) note(Oddity::TooLong);
    for (auto& [oddity, pieces] : oddities_) place_.oddities.push_back({oddity, std::move(pieces)});
    return std::move(place_);
  }

 private:
  void note(Oddity oddity) {
    std::vector<int>& pieces = oddities_[oddity];
    if (number_ > 0 && oddity != Oddity::TooLong && (pieces.empty() || pieces.back() != number_)) {
      pieces.push_back(number_);
    }
  }

  /// Reads a number above 0 and up to `most`; otherwise leaves 0.
  bool read(const std::string& text, double most, double& number) {
    double value = 0.0;
    bool whole = false;
    number = 0.0;
    if (!numberOf(text, value, whole) || !(value > 0.0) || value > most) return false;
    if (!whole) note(Oddity::TrailingText);
    number = value;
    return true;
  }

  double angleOf(const std::string& text) {
    double angle = 0.0;
    if (read(text, 180.0, angle) && angle < 180.0) return angle;
    note(Oddity::NoAngle);
    return kSquare;
  }

  void add(const PIECE_CHILD_SECOND_T& piece) {
    ++number_;
    PiecePlace place{&piece};
    place.start = place_.used;
    if (read(piece.Length, kLongest, place.length)) {
      shape(place);
      addWorks(place);
    } else {
      note(Oddity::NoPieceLength);
    }
    place_.used += place.length;
    place.fits = place_.length == 0.0 || place_.used <= place_.length + kTolerance;
    place_.pieces.push_back(std::move(place));
  }

  void shape(PiecePlace& place) {
    place.leftAngle = angleOf(place.piece->sxB);
    place.rightAngle = angleOf(place.piece->dxB);
    if (place.rightAngle == 135.0) note(Oddity::RightAngle135);
    const auto outline = [&] {
      return outlineOf(place.start, place.length, place_.width, place.leftAngle, place.rightAngle);
    };
    place.outline = outline();
    if (!place.outline.empty()) return;
    note(Oddity::CrossingCuts);
    place.leftAngle = place.rightAngle = kSquare;
    place.outline = outline();
  }

  void addWorks(PiecePlace& place) {
    for (const WORK_T& work : place.piece->work) {
      const bool isOn = work.PositionX >= 0.0 && work.PositionX <= place.length &&
                        work.PositionY >= 0.0 && work.PositionY <= place_.width;
      if (isOn) {
        place.works.push_back({&work, {place.start + work.PositionX, work.PositionY}});
      } else {
        note(Oddity::WorkOffPiece);
      }
    }
  }

  BarPlace place_;
  int number_ = 0;  ///< of the piece at hand, from 1
  std::map<Oddity, std::vector<int>> oddities_;
};

}  // namespace

std::vector<Point> outlineOf(double start, double length, double width, double leftAngle,
                             double rightAngle) {
  const double left = setBack(leftAngle, width);
  const double right = setBack(rightAngle, width);
  // A cut leans away from its tip, which is the lower corner up to 90 degrees, else the upper one.
  const double end = start + length;
  const Point lowerLeft{start + std::max(-left, 0.0), 0.0};
  const Point lowerRight{end - std::max(-right, 0.0), 0.0};
  const Point upperRight{end - std::max(right, 0.0), width};
  const Point upperLeft{start + std::max(left, 0.0), width};
  if (lowerLeft.x > lowerRight.x + kTolerance || upperLeft.x > upperRight.x + kTolerance) return {};
  return {lowerLeft, lowerRight, upperRight, upperLeft};
}

BarPlace layOut(const BAR_T& bar) {
  return Layout(bar).run();
}

}  // namespace desk::draw
