// Corners worked out by hand, on bars whose numbers make that easy.
#include "desk/draw/bar_layout.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using namespace desk::draw;
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

std::string remarksOf(const BarPlace& place) {
  std::string text;
  for (const Oddness& remark : place.oddities) {
    text += (text.empty() ? "" : "; ") + std::to_string(static_cast<int>(remark.oddity)) + ":";
    for (const int piece : remark.pieces) text += " " + std::to_string(piece);
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
  EXPECT_EQ(remarksOf(place), std::to_string(static_cast<int>(Oddity::RightAngle135)) + ": 2");
}

TEST(BarLayout, WorksLieWhereTheirPieceLies) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const BAR_T bar = barOf("3000", "60",
                          {{"1000", "90", "90", {{"a", 1, 0, 0, 5}}},
                           {"1000",
                            "90",
                            "90",
                            {{"in", 1, 250.5, 32.5, 5},
                             {"end", 4, 1000, 60, 5},
                             {"off", 1, 1000.5, 10, 5},
                             {"above", 1, 10, 60.5, 5},
                             {"before", 1, -1, 10, 5},
                             {"nowhere", 1, nan, 10, 5}}}});
  const BarPlace place = layOut(bar);
  ASSERT_EQ(place.pieces[0].works.size(), 1U);
  ASSERT_EQ(place.pieces[1].works.size(), 2U);
  EXPECT_EQ(place.pieces[1].works[0].work, &bar.piece[1].work[0]);
  EXPECT_EQ(textOf({place.pieces[1].works[0].at, place.pieces[1].works[1].at}),
            "12505,325 20000,600");
  EXPECT_EQ(remarksOf(place), std::to_string(static_cast<int>(Oddity::WorkOffPiece)) + ": 2");
}

TEST(BarLayout, WhatIsOddIsRemarkedAndStillLaidOut) {
  const struct {
    const char* length;
    const char* width;
    std::vector<PieceText> pieces;
    std::vector<std::pair<Oddity, std::vector<int>>> remarks;
    double used;
    std::vector<bool> fits;
  } kCases[] = {
      {"6500", "60", {}, {{Oddity::NoPieces, {}}}, 0, {}},
      {"", "60", {{"500", "90", "90"}}, {{Oddity::NoLength, {}}}, 500, {true}},
      {"-5",
       "x",
       {},
       {{Oddity::NoLength, {}}, {Oddity::NoPieces, {}}, {Oddity::NoWidth, {}}},
       0,
       {}},
      {"1000",
       "60",
       {{"600", "90", "90"}, {"400", "90", "90"}, {"1", "90", "90"}},
       {{Oddity::TooLong, {}}},
       1001,
       {true, true, false}},
      {"1000",
       "60",
       {{"", "90", "90"}, {"long", "", ""}, {"1e9", "90", "90"}, {"500", "90", "90"}},
       {{Oddity::NoPieceLength, {1, 2, 3}}},
       500,
       {true, true, true, true}},
      {"0.3",  // three tenths are a little more, as computers add
       "9",
       {{"0.1", "90", "90"}, {"0.1", "90", "90"}, {"0.1", "90", "90"}},
       {},
       0.3,
       {true, true, true}},
      {"1000mm", "60", {{"500 mm", "45°", "90"}}, {{Oddity::TrailingText, {1}}}, 500, {true}},
      {"1000",
       "60",
       {{"300", "", "90"}, {"300", "180", "0"}, {"300", "-45", "left"}},
       {{Oddity::NoAngle, {1, 2, 3}}},
       900,
       {true, true, true}},
      {"1000", "60", {{"100", "45", "45"}}, {{Oddity::CrossingCuts, {1}}}, 100, {true}},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(row.length + std::string(" ") + std::to_string(row.used));
    const BAR_T bar = barOf(row.length, row.width, row.pieces);
    const BarPlace place = layOut(bar);
    std::vector<std::pair<Oddity, std::vector<int>>> remarks;
    for (const Oddness& remark : place.oddities) remarks.emplace_back(remark.oddity, remark.pieces);
    EXPECT_EQ(remarks, row.remarks);
    EXPECT_DOUBLE_EQ(place.used, row.used);
    std::vector<bool> fits;
    for (const PiecePlace& piece : place.pieces) fits.push_back(piece.fits);
    EXPECT_EQ(fits, row.fits);
  }
  EXPECT_THAT(layOut(barOf("9", "9", {{"", "90", "90"}})).pieces[0].outline, IsEmpty());
}

}  // namespace
