// Hits, the selected row, and grids and rectangles of any size.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "part/svg_table.h"
#include "tests/part/picture.h"

namespace {

constexpr int kMiss = 0;

int clickedRow(const tagRECT& area, unsigned short rows, const tagPOINT& point) {
  CSVGLuaParseModule table;
  table.SetSvgRect(area);
  table.SetCell(rows, 2, {});
  const bool hit = table.Click(point);
  EXPECT_EQ(hit, table.GetSelectedRow() != kMiss);
  return table.GetSelectedRow();
}

TEST(Hits, BelongToTheRowBelowAndRightOfTheirEdge) {
  constexpr tagRECT kArea = {100, 50, 300, 81};  // four bands on 31 pixels: 7, 8, 8, 8
  const struct {
    tagRECT area;
    unsigned short rows;
    tagPOINT point;
    int row;
  } cases[] = {
      {kArea, 3, {100, 56}, kMiss},  // the head's last pixel
      {kArea, 3, {100, 57}, 1},
      {kArea, 3, {299, 64}, 1},
      {kArea, 3, {200, 65}, 2},
      {kArea, 3, {200, 72}, 2},
      {kArea, 3, {200, 73}, 3},
      {kArea, 3, {299, 80}, 3},
      {kArea, 3, {299, 81}, kMiss},
      {kArea, 3, {300, 80}, kMiss},
      {kArea, 3, {99, 80}, kMiss},
      {kArea, 3, {200, 49}, kMiss},
      {kArea, 0, {200, 70}, kMiss},
      {{-50, -40, 50, 40}, 1, {-50, 0}, 1},
      {{300, 50, 100, 81}, 3, {200, 70}, kMiss},  // inverted
      {{0, 0, 0, 0}, 3, {0, 0}, kMiss},
      {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 1, {-2, -2}, 1},
      {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 1, {INT_MAX, INT_MAX}, kMiss},  // beyond INT_MAX wide
      {{0, 0, INT_MAX, INT_MAX}, 65535, {INT_MAX - 1, INT_MAX - 1}, 65535},
      {{0, 0, 100, 100}, 65535, {99, 99}, 65535},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.point.x << "," << row.point.y << " of " << row.area.left
                                    << "," << row.area.top);
    EXPECT_EQ(clickedRow(row.area, row.rows, row.point), row.row);
  }
}

TEST(Selection, OutlivesTextsAndEndsWithTheGrid) {
  CSVGLuaParseModule table;
  table.SetSvgRect({0, 0, 100, 40});
  table.SetCell(3, 1, {});
  Rows rows{{"a"}};
  EXPECT_TRUE(table.Click({5, 25}));
  EXPECT_FALSE(table.Click({5, 5}));
  table.DrawBodyText(rows.list());
  EXPECT_EQ(table.GetSelectedRow(), 2);
  table.SetCell(3, 1, {});
  EXPECT_EQ(table.GetSelectedRow(), 0);
  EXPECT_TRUE(table.Click({5, 25}));
  table.Reset();
  EXPECT_EQ(table.GetSelectedRow(), 0);
  EXPECT_FALSE(table.Click({5, 25}));
}

TEST(Grid, OfAnySizeGivesABoundedPicture) {
  constexpr tagRECT kPanel = {0, 0, 800, 480};
  const struct {
    tagRECT area;
    unsigned short rows, cols;
    int atMost;  ///< elements
  } cases[] = {
      {kPanel, 65535, 65535, 1100},
      {kPanel, 65535, 1, 700},
      {kPanel, 0, 5, 1},
      {kPanel, 5, 0, 1},
      {{800, 480, 0, 0}, 5, 5, 0},
      {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 10, 10, 40},
      {{0, 0, 1, 1}, 1, 1, 10},
  };
  Rows rows{{"text", "text"}, {}, {"text"}};
  rows.list().push_front(nullptr);
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.rows << " x " << row.cols << " to " << row.area.right);
    CSVGLuaParseModule table;
    table.SetSvgRect(row.area);
    table.SetCell(row.rows, row.cols, {});
    table.DrawHeadText({"head", "head"});
    table.DrawBodyText(rows.list());
    std::string svg;
    table.GetSVGXml(svg);
    EXPECT_LE(Picture(svg).elements, row.atMost);
  }
}

TEST(Grid, ShowsLinesAndTextsThatAreJustLargeEnough) {
  CSVGLuaParseModule table;
  std::string svg;
  table.SetSvgRect({0, 0, 100, 44});  // eleven bands of four pixels
  table.SetCell(10, 1, {});
  table.GetSVGXml(svg);
  EXPECT_EQ(Picture(svg).elements, 21);  // of which ten are lines between bands
  table.SetSvgRect({0, 0, 100, 24});
  table.SetCell(1, 1, {});
  table.DrawHeadText({"head"});
  Rows rows{{"below the grid"}};
  rows.list().push_front(nullptr);  // takes the first row
  table.DrawBodyText(rows.list());
  table.GetSVGXml(svg);
  EXPECT_EQ(Picture(svg).texts, std::vector<std::string>{"head"});
}

TEST(Grid, FallsBackToEqualColumnsWithoutUsableRatios) {
  const float infinite = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const std::vector<double> equal = {150};
  const struct {
    std::vector<float> ratios;
    std::vector<double> lines;  ///< on 300 pixels
  } cases[] = {
      {{2.0F, 1.0F}, {200}},         {{3e38F, 3e38F}, equal},        {{1.0F}, equal},
      {{1.0F, 1.0F, 1.0F}, equal},   {{0.0F, 0.0F}, equal},          {{-1.0F, 3.0F}, equal},
      {{infinite, infinite}, equal}, {{infinite, -infinite}, equal}, {{nan, 1.0F}, equal},
  };
  for (const auto& row : cases) {
    CSVGLuaParseModule table;
    table.SetSvgRect({0, 0, 300, 100});
    table.SetCell(2, 2, row.ratios);
    std::string svg;
    table.GetSVGXml(svg);
    EXPECT_EQ(Picture(svg).columnLines, row.lines) << testing::PrintToString(row.ratios);
  }
}

}  // namespace
