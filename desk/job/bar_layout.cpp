#include "desk/job/bar_layout.h"

#include <algorithm>
#include <cmath>

namespace desk::job {

namespace {

constexpr double kUsualWidth = 60.0;
constexpr double kWidest = 1000.0;  ///< of what is guessed from works
constexpr double kSquare = 90.0;

/// How far a cut at this angle goes along the bar while it crosses the profile.
double setBack(double angle, double width) {
  constexpr double kPi = 3.14159265358979323846;
  return width / std::tan(angle * kPi / 180.0);
}

double lengthOf(const std::string& text) {
  const Measure measure = measureOf(text);
  return measure.isA(model::TextForm::Size) ? measure.value : 0.0;
}

double angleOf(const std::string& text) {
  const Measure measure = measureOf(text);
  return measure.isA(model::TextForm::Angle) ? measure.value : kSquare;
}

/// By how much a piece is too short for two angles, 0 when it is not.
double missingLength(const PiecePlace& place, double width) {
  double missing = 0.0;
  for (const double y : {0.0, width}) {
    const double needed =
        inwardsAt(y, width, place.leftAngle) + inwardsAt(y, width, place.rightAngle);
    missing = std::max(missing, needed - place.length);
  }
  return missing > kTolerance ? missing : 0.0;
}

/// What two cuts leave of a piece that meet before they have crossed the profile: a triangle; empty
/// when they leave nothing.
std::vector<Point> tipOf(const PiecePlace& place, double width) {
  const auto leftAt = [&](double y) { return place.start + inwardsAt(y, width, place.leftCut); };
  const auto lengthAt = [&](double y) {
    return place.start + place.length - inwardsAt(y, width, place.rightCut) - leftAt(y);
  };
  const double lower = lengthAt(0.0);
  const double upper = lengthAt(width);
  if (lower * upper >= 0.0) return {};
  const double meet = width * lower / (lower - upper);
  const Point tip{leftAt(meet), meet};
  if (lower > 0.0) return {{leftAt(0.0), 0.0}, {leftAt(0.0) + lower, 0.0}, tip};
  return {tip, {leftAt(width) + upper, width}, {leftAt(width), width}};
}

void shape(PiecePlace& place, double width) {
  place.leftAngle = angleOf(place.piece->sxB);
  place.rightAngle = angleOf(place.piece->dxB);
  place.leftCut = place.leftAngle;
  place.rightCut = place.rightAngle;
  place.tooShortBy = missingLength(place, width);
  if (place.tooShortBy > 0.0) {
    place.outline = tipOf(place, width);
    place.leftAngle = place.rightAngle = kSquare;
  }
  if (!place.outline.empty()) return;
  place.outline = outlineOf(place.start, place.length, width, place.leftAngle, place.rightAngle);
}

bool isBetween(double number, double from, double to) {
  return number >= from - kRounding && number <= to + kRounding;
}

WorkPlace::Lies whereLies(const WORK_T& work, const PiecePlace& place, double width) {
  using Lies = WorkPlace::Lies;
  const double x = work.PositionX;
  const double y = work.PositionY;
  if (!isBetween(x, 0.0, place.length)) return Lies::BesidePiece;
  if (!isBetween(y, 0.0, width)) return Lies::OffProfile;
  if (x + kRounding < inwardsAt(y, width, place.leftAngle)) return Lies::InLeftCorner;
  if (place.length - x + kRounding < inwardsAt(y, width, place.rightAngle)) {
    return Lies::InRightCorner;
  }
  return Lies::OnPiece;
}

void addWorks(PiecePlace& place, double width) {
  for (const WORK_T& work : place.piece->work) {
    place.works.push_back(
        {&work, {place.start + work.PositionX, work.PositionY}, whereLies(work, place, width)});
  }
}

/// A width that all works of a bar lie on.
double usualWidth(const BAR_T& bar) {
  double width = kUsualWidth;
  for (const PIECE_T& piece : bar.piece) {
    for (const WORK_T& work : piece.work) {
      if (work.PositionY < kWidest) width = std::max(width, work.PositionY);
    }
  }
  return width;
}

/// How far the right one of two neighbours may lie left of the tip of the other.
double sharedBy(const PiecePlace& left, const PiecePlace& right, double width) {
  const auto gapAt = [&](double y) {
    return inwardsAt(y, width, left.rightAngle) + inwardsAt(y, width, right.leftAngle);
  };
  return std::min(gapAt(0.0), gapAt(width));
}

}  // namespace

double inwardsAt(double y, double width, double angle) {
  // A cut leans away from its tip, which is the lower corner up to 90 degrees, else the upper one.
  const double all = setBack(angle, width);
  return all > 0.0 ? all * y / width : -all * (1.0 - y / width);
}

std::vector<Point> outlineOf(double start, double length, double width, double leftAngle,
                             double rightAngle) {
  const double end = start + length;
  const Point lowerLeft{start + inwardsAt(0.0, width, leftAngle), 0.0};
  const Point lowerRight{end - inwardsAt(0.0, width, rightAngle), 0.0};
  const Point upperRight{end - inwardsAt(width, width, rightAngle), width};
  const Point upperLeft{start + inwardsAt(width, width, leftAngle), width};
  if (lowerLeft.x > lowerRight.x + kTolerance || upperLeft.x > upperRight.x + kTolerance) return {};
  return {lowerLeft, lowerRight, upperRight, upperLeft};
}

BarPlace layOut(const BAR_T& bar) {
  BarPlace place{&bar};
  place.length = lengthOf(bar.length);
  place.isLengthKnown = plainSizeOf(bar.length) > 0.0;
  place.width = lengthOf(bar.MaxY);
  place.isWidthKnown = place.width > 0.0;
  if (!place.isWidthKnown) place.width = usualWidth(bar);
  place.pieces.reserve(bar.piece.size());
  for (const PIECE_CHILD_SECOND_T& record : bar.piece) {
    PiecePlace piece{&record};
    piece.start = place.used;
    piece.isStartKnown = place.unknown == 0;
    piece.length = lengthOf(record.Length);
    piece.isLengthKnown = plainSizeOf(record.Length) > 0.0;
    if (!piece.isLengthKnown) ++place.unknown;
    if (piece.length > 0.0) {
      shape(piece, place.width);
      addWorks(piece, place.width);
      const bool hasNeighbour = !place.pieces.empty() && place.pieces.back().length > 0.0;
      if (hasNeighbour) place.shared += sharedBy(place.pieces.back(), piece, place.width);
    }
    place.used += piece.length;
    piece.fits = place.fits();
    place.pieces.push_back(std::move(piece));
  }
  return place;
}

std::vector<BarPlace> judgedBars(const DATA_T& job, model::JobFormat format,
                                 const Selection& meant) {
  std::vector<BarPlace> bars;
  int number = 0;
  for (const BAR_T& bar : job.Bar) {
    ++number;
    if (!meant.has(bar)) continue;
    bars.push_back(layOut(bar));
    judge(bars.back(), number, format);
  }
  return bars;
}

}  // namespace desk::job
