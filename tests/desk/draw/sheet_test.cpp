// What makes a drawing readable on paper: its scales, its pages, and what is written where.
#include <gmock/gmock.h>

#include "desk/draw/piece_label.h"
#include "desk/draw/sheet.h"

namespace {

using namespace desk::draw;
using testing::ElementsAre;

TEST(Scale, IsAUsualOneThatTheLongestAndTheWidestBarFitIn) {
  const struct {
    double length, width;  ///< of the largest bar
    double along, across;
  } kCases[] = {
      {6500, 65, 25, 8},    // 6500 / 277 = 23.5, 65 / 9 = 7.2
      {7000, 100, 30, 15},  // 25.3, 11.1
      {277, 9, 1, 1},       // true to size
      {300, 60, 2, 2},      // no longer needed: as wide as it is
      {100, 90, 3, 3},      // 90 / 30: the band would be too high
      {10, 1, 1, 1},        // never larger than it is
      {1e9, 65, 4e6, 8},
  };
  for (const auto& row : kCases) {
    BarPlace small{nullptr};
    small.length = small.width = 1.0;
    BarPlace large{nullptr};
    large.length = row.length;
    large.width = row.width;
    const Scale scale = scaleFor({small, large, small}, 277.0);
    EXPECT_DOUBLE_EQ(scale.along, row.along) << row.length;
    EXPECT_DOUBLE_EQ(scale.across, row.across) << row.length;
  }
}

TEST(Pages, CutNoBlock) {
  const Pages pages = paginate({80, 70, 60, 100, 20, 184}, 30, 16);
  // 180 of 200 are taken, so 60 go to 210 + 16; 406 of 410, so 184 go to 420 + 16 and fill it
  EXPECT_THAT(pages.tops, ElementsAre(30, 110, 226, 286, 386, 436));
  EXPECT_EQ(pages.count, 3);
  EXPECT_DOUBLE_EQ(pages.height, 630);
}

TEST(Pages, OneAloneIsAsHighAsNeeded) {
  EXPECT_DOUBLE_EQ(paginate({80.5}, 30, 16).height, 121);
  EXPECT_DOUBLE_EQ(paginate({}, 30, 16).height, 40);
}

TEST(PieceLabel, LeavesOutWhatHasNoRoomAndSaysSo) {
  PIECE_CHILD_SECOND_T piece;
  PiecePlace place{&piece};
  place.length = 385.5;
  place.isLengthKnown = true;
  place.leftAngle = 45.0;
  const struct {
    double length;  ///< on paper
    const char* barCode;
    const char* texts;
  } kCases[] = {
      {18.5, "条码-000123", "45° 12  385.5 条码-000123 whole"},
      {17.4, "条码-000123", " 12  385.5 条码-0001… cut"},
      {14, "条码-000123", " 12  385.5 条码-00… cut"},
      {14, "WMQ-0123", " 12  385.5 WMQ-… cut"},
      {14, "lift-0123", " 12  385.5 lift-0123 cut"},
      {10, "条码-000123", " 12  385.5 条码… cut"},
      {8, "条码-000123", " 12    cut"},
      {4, "条码-000123", "     cut"},
  };
  for (const auto& row : kCases) {
    const PieceLabel label = labelOf(place, "12", row.barCode, row.length);
    EXPECT_EQ(label.leftAngle + " " + label.number + " " + label.rightAngle + " " + label.length +
                  " " + label.barCode + (label.isWhole ? " whole" : " cut"),
              row.texts)
        << row.length;
  }
  EXPECT_EQ(lineOf(place, "12", "条码-000123"), "12: 385.5, 45°/90°, 条码-000123");
}

}  // namespace
