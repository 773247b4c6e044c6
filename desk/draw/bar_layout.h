// Where the pieces of a bar lie, how their ends are cut and where they are worked on.
//
// Lengths are those of the job, as a rule mm. A bar lies from left to right: x runs along it from
// its left end, y across the profile from the lower edge up. Pieces follow one another without a
// gap, in the order of the job: no job tells the width of the saw blade or how the bar's ends are
// trimmed.
#pragma once

#include <string>
#include <vector>

#include "model/job_records.h"

namespace desk::draw {

struct Point {
  double x = 0.0;
  double y = 0.0;
};

/// One work where the tool meets the profile.
struct WorkPlace {
  const WORK_T* work;  ///< in the job
  Point at;            ///< on the bar
};

struct PiecePlace {
  const PIECE_CHILD_SECOND_T* piece;  ///< in the job
  double start = 0.0;                 ///< of its left tip, on the bar
  double length = 0.0;                ///< from tip to tip; 0: the job tells none
  double leftAngle = 90.0;            ///< as drawn, see outlineOf
  double rightAngle = 90.0;
  /// Its corners: lower left, lower right, upper right, upper left. Empty without a length.
  std::vector<Point> outline{};
  std::vector<WorkPlace> works{};  ///< those that lie on the piece
  bool fits = true;                ///< whether it ends on the bar
};

/// What is odd about a bar and its pieces.
enum class Oddity {
  NoLength,       ///< of the bar
  TooLong,        ///< the pieces together, for the bar
  NoPieces,       ///< on the bar
  NoWidth,        ///< of the profile
  NoPieceLength,  ///< a piece without a length that could be cut
  TrailingText,   ///< a number is followed by something else
  NoAngle,        ///< an end without an angle between 0 and 180 degrees: drawn square
  CrossingCuts,   ///< the ends do not leave anything of one edge: drawn square
  RightAngle135,  ///< which a JSON job would have as 45
  WorkOffPiece,   ///< a work beside its piece: not drawn
};

struct Oddness {
  Oddity oddity;
  std::vector<int> pieces;  ///< from 1, in the order of the bar; empty: the bar itself
};

struct BarPlace {
  const BAR_T* bar;     ///< in the job
  double length = 0.0;  ///< 0: the job tells none
  double width = 0.0;   ///< of the profile, a usual one when the job tells none
  double used = 0.0;    ///< the pieces' lengths together
  std::vector<PiecePlace> pieces{};
  std::vector<Oddness> oddities{};  ///< in the order of Oddity

  /// What no piece takes; negative when the pieces are too long for the bar.
  double leftOver() const { return length - used; }
  /// How far the drawing reaches.
  double extent() const { return length > used ? length : used; }
};

/// Lays out a bar of a job, which must outlive the result. Texts that are no numbers, and numbers
/// that no bar can have, never keep a bar from being laid out: they become oddities.
BarPlace layOut(const BAR_T& bar);

/// The corners of a piece whose left tip lies at `start`. An angle is the one, inside the piece,
/// between its lower edge and the cut, in degrees: 90 is square, with less the lower edge is the
/// longer one. Empty when the cuts meet before they have crossed the profile.
std::vector<Point> outlineOf(double start, double length, double width, double leftAngle,
                             double rightAngle);

}  // namespace desk::draw
