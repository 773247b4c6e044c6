// Where the pieces of a bar lie, how their ends are cut and where they are worked on.
//
// Lengths are those of the job, mm. A bar lies from left to right: x runs along it from its left
// end, y across the profile from the lower edge up. Pieces follow one another tip to tip, in the
// order of the job: no job tells the width of the saw blade or how the bar's ends are trimmed.
#pragma once

#include <string>
#include <vector>

#include "desk/job/measure.h"
#include "desk/job/oddities.h"
#include "desk/job/selection.h"
#include "model/job_records.h"

namespace desk::job {

/// What planning systems round by, mm. A work that lies so far off its piece lies on it.
constexpr double kRounding = 0.1;

/// Of the bars that are in trade, mm.
constexpr double kLongestBar = 20000.0;

/// What sums and tangents are rounded by, mm.
constexpr double kTolerance = 1e-6;

struct Point {
  double x = 0.0;
  double y = 0.0;
};

/// One work where the tool meets the profile.
struct WorkPlace {
  enum class Lies {
    OnPiece,
    InLeftCorner,   ///< in what the left cut takes off
    InRightCorner,  ///< in what the right cut takes off
    OffProfile,     ///< below its lower edge or above its upper one
    BesidePiece,    ///< left or right of it
  };

  const WORK_T* work;  ///< in the job
  Point at;            ///< on the bar
  Lies lies = Lies::OnPiece;

  /// Whether a drawing can show it.
  bool isDrawn() const { return lies != Lies::OffProfile && lies != Lies::BesidePiece; }
};

struct PiecePlace {
  const PIECE_CHILD_SECOND_T* piece;  ///< in the job
  double start = 0.0;                 ///< of its left tip, on the bar
  double length = 0.0;                ///< from tip to tip, as drawn; 0: the job tells none
  bool isStartKnown = true;           ///< whether the lengths of all pieces before it are known
  bool isLengthKnown = false;         ///< whether it is a plain number
  double leftAngle = 90.0;            ///< see outlineOf; square where it is too short for both
  double rightAngle = 90.0;
  double leftCut = 90.0;  ///< as the job says, also where it is too short
  double rightCut = 90.0;
  /// Its corners: lower left, lower right, upper right, upper left; three where its cuts meet
  /// before they have crossed the profile. Empty without a length.
  std::vector<Point> outline{};
  std::vector<WorkPlace> works{};  ///< as in the job; none without a length
  double tooShortBy = 0.0;         ///< for its angles
  bool fits = true;                ///< whether it ends on the bar
};

struct BarPlace {
  const BAR_T* bar;            ///< in the job
  int number = 0;              ///< its place in the job, from 1; 0 until it was judged
  double length = 0.0;         ///< as drawn; 0: the job tells none
  bool isLengthKnown = false;  ///< whether it is a plain number
  double width = 0.0;          ///< of the profile, a usual one when the job tells none
  bool isWidthKnown = true;    ///< whether the job tells it
  double used = 0.0;           ///< the pieces' lengths together, as drawn
  std::size_t unknown = 0;     ///< of the pieces: those whose length is not known
  /// How much less the pieces take where neighbours with slanted ends share their cut.
  double shared = 0.0;
  std::vector<PiecePlace> pieces{};
  Oddities oddities{};  ///< once it was judged

  /// What no piece takes; negative when the pieces are too long for the bar.
  double leftOver() const { return length - used; }
  /// Whether the pieces fit on the bar, as far as the job tells its length.
  bool fits() const { return length == 0.0 || leftOver() >= -kTolerance; }
  /// Whether what is used and left over is known, not only drawn: all lengths are plain numbers.
  bool isKnown() const { return isLengthKnown && unknown == 0; }
  /// How far the drawing reaches.
  double extent() const { return length > used ? length : used; }
};

/// Lays out a bar of a job, which must outlive the result. Texts that are no numbers, and numbers
/// that no bar can have, never keep a bar from being laid out.
BarPlace layOut(const BAR_T& bar);

/// The bars of a job that are meant, laid out and judged, in the order of the job. It must outlive
/// the result.
std::vector<BarPlace> judgedBars(const DATA_T& job, model::JobFormat format,
                                 const Selection& meant = {});

/// The corners of a piece whose left tip lies at `start`. An angle is the one, inside the piece,
/// between its lower edge and the cut, in degrees: 90 is square, with less the lower edge is the
/// longer one. Empty when the cuts meet before they have crossed the profile.
std::vector<Point> outlineOf(double start, double length, double width, double leftAngle,
                             double rightAngle);

/// How far the cut at one end of a piece is inwards of its tip at a height of the profile, mm.
double inwardsAt(double y, double width, double angle);

}  // namespace desk::job
