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
      {6500, 65, 25, 8},    // 6500 / 267 = 24.3, 65 / 9 = 7.2
      {7000, 100, 30, 12},  // 26.2, 11.1
      {267, 9, 1, 1},       // true to size
      {300, 60, 2, 2},      // no longer needed: as wide as it is
      {100, 90, 3, 3},      // 90 / 30: the lane would be too high
      {10, 1, 1, 1},        // never larger than it is
      {20000, 65, 80, 8},   // 74.9
      {20001, 9, 1, 1},     // in no trade: the others count
  };
  for (const auto& row : kCases) {
    BarPlace small{nullptr};
    small.length = small.width = 1.0;
    BarPlace large{nullptr};
    large.length = row.length;
    large.width = row.width;
    const Scale scale = scaleFor({small, large, small});
    EXPECT_DOUBLE_EQ(scale.along, row.along) << row.length;
    EXPECT_DOUBLE_EQ(scale.across, row.across) << row.length;
  }
}

TEST(Pages, CutNoBlock) {
  const Pages pages = paginate({80, 70, 60, 100, 20, 184}, 16);
  // 166 of 200 are taken, so 60 go to 210 + 16; 406 of 410, so 184 go to 420 + 16 and fill it
  EXPECT_THAT(pages.tops, ElementsAre(16, 96, 226, 286, 386, 436));
  EXPECT_EQ(pages.count, 3);
  EXPECT_DOUBLE_EQ(pages.height, 630);
}

TEST(Pages, OneAloneIsAsHighAsNeeded) {
  EXPECT_DOUBLE_EQ(paginate({80.5}, 30).height, 121);
  EXPECT_DOUBLE_EQ(paginate({}, 30).height, 40);
}

TEST(PieceLabel, LeavesOutWhatHasNoRoomAndSaysSo) {
  PIECE_CHILD_SECOND_T piece;
  PiecePlace place{&piece};
  place.length = 385.5;
  place.isLengthKnown = true;
  place.leftCut = 45.0;
  const struct {
    double length;  ///< on paper
    const char* barCode;
    const char* texts;
  } kCases[] = {
      {20, "条码-000123", "45° 12  385.5 条码-000123 whole"},
      {18.7, "条码-000123", " 12  385.5 条码-0001… cut"},
      {15, "条码-000123", " 12  385.5 条码-00… cut"},
      {15, "WMQ-0123", " 12  385.5 WMQ-… cut"},
      {15, "lift-0123", " 12  385.5 lift-0123 cut"},
      {10.6, "条码-000123", " 12  385.5 条码… cut"},
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
