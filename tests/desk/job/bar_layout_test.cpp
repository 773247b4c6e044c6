// Corners worked out by hand, on bars whose numbers make that easy.
#include "desk/job/bar_layout.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using namespace desk::job;
using testing::ElementsAre;
using testing::IsEmpty;

struct PieceText {
  std::string length, left, right;
  std::vector<WORK_T> works{};
};

BAR_T barOf(const std::string& length, const std::string& width,
            const std::vector<PieceText>& pieces) {
  BAR_T bar;
  bar.length = length;
  bar.MaxY = width;
  for (const PieceText& text : pieces) {
    PIECE_CHILD_SECOND_T& piece = bar.piece.emplace_back();
    piece.Length = text.length;
    piece.sxB = text.left;
    piece.dxB = text.right;
    piece.work = text.works;
  }
  return bar;
}

/// Corners as text, rounded: "100,0 900,0 840,60 160,60".
std::string textOf(const std::vector<Point>& outline) {
  std::string text;
  for (const Point& point : outline) {
    text += (text.empty() ? "" : " ") + std::to_string(std::lround(point.x * 10)) + "," +
            std::to_string(std::lround(point.y * 10));
  }
  return text;
}

TEST(Outline, HasTheCornersOfTheTwoCuts) {
  const struct {
    double start, length, width, left, right;
    const char* corners;  ///< in tenths, lower left first, then to the right
  } kCases[] = {
      {0, 1000, 60, 90, 90, "0,0 10000,0 10000,600 0,600"},
      {0, 1000, 60, 45, 45, "0,0 10000,0 9400,600 600,600"},
      {100, 1000, 60, 45, 45, "1000,0 11000,0 10400,600 1600,600"},
      {0, 1000, 60, 135, 135, "600,0 9400,0 10000,600 0,600"},
      {0, 1000, 60, 45, 135, "0,0 9400,0 10000,600 600,600"},
      {0, 1000, 60, 135, 45, "600,0 10000,0 9400,600 0,600"},
      {0, 1000, 60, 45, 90, "0,0 10000,0 10000,600 600,600"},
      // tan 60 is 1.7320508: 60 across are 34.6 along; at 30 they are 103.9
      {0, 1000, 60, 60, 30, "0,0 10000,0 8961,600 346,600"},
      {0, 1000, 60, 120, 150, "346,0 8961,0 10000,600 0,600"},
      // as short as both cuts allow: the upper edge is a point
      {0, 120, 60, 45, 45, "0,0 1200,0 600,600 600,600"},
      {0, 119, 60, 45, 45, ""},
      // cuts that run alongside leave 1 mm of either edge, or nothing
      {0, 61, 60, 45, 135, "0,0 10,0 610,600 600,600"},
      {0, 59, 60, 45, 135, ""},
      {0, 1000, 60, 0.001, 90, ""},
      {0, 1000, 60, 90, 179.999, ""},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(textOf(outlineOf(row.start, row.length, row.width, row.left, row.right)), row.corners)
        << row.length << " " << row.left << " " << row.right;
  }
}

TEST(BarLayout, PiecesFollowOneAnotherAndLeaveTheRest) {
  const BAR_T bar = barOf("6500", "60", {{"1200.5", "45", "45"}, {"800", "90", "135"}});
  const BarPlace place = layOut(bar);
  ASSERT_EQ(place.pieces.size(), 2U);
  EXPECT_EQ(textOf(place.pieces[0].outline), "0,0 12005,0 11405,600 600,600");
  EXPECT_EQ(textOf(place.pieces[1].outline), "12005,0 19405,0 20005,600 12005,600");
  EXPECT_EQ(place.pieces[1].piece, &bar.piece[1]);
  EXPECT_DOUBLE_EQ(place.used, 2000.5);
  EXPECT_DOUBLE_EQ(place.leftOver(), 4499.5);
}

TEST(BarLayout, WorksLieWhereTheirPieceLies) {
  using Lies = WorkPlace::Lies;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    double x, y;
    Lies lies;
  } kCases[] = {{250.5, 32.5, Lies::OnPiece},    {1000.1, 60.1, Lies::OnPiece},
                {1000.2, 10, Lies::BesidePiece}, {-0.2, 10, Lies::BesidePiece},
                {nan, 10, Lies::BesidePiece},    {10, 60.2, Lies::OffProfile},
                {10, -0.2, Lies::OffProfile},    {29.8, 30, Lies::InLeftCorner},
                {29.95, 30, Lies::OnPiece},      {970.05, 30, Lies::OnPiece},
                {970.2, 30, Lies::InRightCorner}};
  std::vector<WORK_T> works;
  for (const auto& row : kCases) works.push_back({"w", 1, row.x, row.y, 5});
  // The left cut takes off the upper corner, the right one the lower corner.
  const BAR_T bar = barOf("3000", "60", {{"500", "90", "90"}, {"1000", "45", "135", works}});
  const BarPlace place = layOut(bar);
  ASSERT_EQ(place.pieces[1].works.size(), std::size(kCases));
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    EXPECT_EQ(place.pieces[1].works[i].lies, kCases[i].lies) << kCases[i].x << " " << kCases[i].y;
  }
  EXPECT_EQ(textOf({place.pieces[1].works[0].at}), "7505,325");
}

TEST(BarLayout, WhatCannotBeIsStillLaidOut) {
  const struct {
    const char* length;
    const char* width;
    std::vector<PieceText> pieces;
    double used, shared;
    std::vector<bool> fits;
  } kCases[] = {
      {"", "60", {{"500", "90", "90"}}, 500, 0, {true}},
      {"-5", "x", {}, 0, 0, {}},
      {"1000",
       "60",
       {{"600", "90", "90"}, {"400", "90", "90"}, {"1", "90", "90"}},
       1001,
       0,
       {true, true, false}},
      {"1000",
       "60",
       {{"", "90", "90"}, {"long", "", ""}, {"1e9", "90", "90"}, {"500", "90", "90"}},
       500,
       0,
       {true, true, true, true}},
      // three tenths are a little more, as computers add
      {"0.3",
       "9",
       {{"0.1", "90", "90"}, {"0.1", "90", "90"}, {"0.1", "90", "90"}},
       0.3,
       0,
       {true, true, true}},
      // ends that run alongside share their cut, those that lean apart do not
      {"2000",
       "60",
       {{"900", "45", "135"}, {"900", "45", "45"}, {"100", "45", "90"}},
       1900,
       60,
       {true, true, true}},
      // too short for its angles, and thus square
      {"1000", "60", {{"100", "45", "45"}, {"300", "180", "-45"}}, 400, 0, {true, true}},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(row.length + std::string(" ") + std::to_string(row.used));
    const BAR_T bar = barOf(row.length, row.width, row.pieces);
    const BarPlace place = layOut(bar);
    EXPECT_DOUBLE_EQ(place.used, row.used);
    EXPECT_NEAR(place.shared, row.shared, 1e-9);
    std::vector<bool> fits;
    for (const PiecePlace& piece : place.pieces) fits.push_back(piece.fits);
    EXPECT_EQ(fits, row.fits);
  }
  EXPECT_THAT(layOut(barOf("9", "9", {{"", "90", "90"}})).pieces[0].outline, IsEmpty());
}

}  // namespace
