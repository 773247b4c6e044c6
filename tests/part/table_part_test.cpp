// Paging arithmetic, column widths and the redraw handshake of the table part.
#include "part/table_part.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "desk/host/settings.h"
#include "tests/part/picture.h"

namespace {

using testing::ElementsAre;

constexpr int kUntouched = 77;

void setRows(CLuaParseModulePart& part, int rows) {
  ASSERT_EQ(part.SetCell(static_cast<unsigned short>(rows), 1, ""), 1);
}

void place(CLuaParseModulePart& part, tagRECT area) {
  tagPARTINFO info{area};
  ASSERT_EQ(part.onInit(&info), 0);
}

int click(CLuaParseModulePart& part, int x, int y, int type = 1) {
  return part.onClick(0, static_cast<tagCLICKPARTTYPE>(type), tagPOINT{x, y}, nullptr);
}

/// Does what the words say, and tells what the part answers: "r5" 5 rows a page, "12" an update to
/// 12 rows, "d" a page down, "u" a page up, "e" down to the end, "p" where it is.
std::string answersTo(CLuaParseModulePart& part, const std::string& steps) {
  std::istringstream words(steps);
  std::ostringstream answers;
  for (std::string word; words >> word;) {
    unsigned short page = 0, pages = 0;
    int first = kUntouched, last = kUntouched;
    if (word[0] == 'r') {
      setRows(part, std::stoi(word.substr(1)));
    } else if (word == "e") {
      while (part.PageDown() == 1) {
      }
    } else if (word == "d" || word == "u") {
      answers << word << (word == "d" ? part.PageDown() : part.PageUp()) << " ";
    } else if (word == "p") {
      part.GetPage(page, pages);
      answers << page << "/" << pages << " ";
    } else if (part.Update(static_cast<unsigned short>(std::stoi(word)), first, last) == 1) {
      EXPECT_TRUE(part.nFirstRow == first && part.nLastRow == last) << steps;
      answers << first << ".." << last << " ";
    } else {
      answers << "none ";
      EXPECT_TRUE(first == kUntouched && last == kUntouched) << steps;
    }
  }
  return answers.str();
}

TEST(Paging, TellsTheRowsOfEachPage) {
  const struct {
    int order;
    const char* steps;
    const char* answers;
  } cases[] = {
      {0, "p d u r5 d 12 u d 12 d 12 d", "1/1 d0 u0 d0 1..5 u0 d1 6..10 d1 11..12 d0 "},
      {1, "r5 12 d 12 d 12", "8..12 d1 3..7 d1 1..2 "},
      {0, "r5 10 e p 10 11 e p", "1..5 2/2 6..10 6..10 3/3 "},
      {1, "r5 10 e 10", "6..10 1..5 "},
      {0, "r5 3", "1..3 "},
      {1, "r5 3", "1..3 "},
      {2, "r5 12", "77..77 "},
      {0, "12 r5 0", "none none "},
      {0, "r1 65535 e 65535 p", "1..1 65535..65535 65535/65535 "},
      {1, "r1 65535 e 65535", "65535..65535 1..1 "},
      {0, "r65535 65535", "1..65535 "},
      {1, "r2 65535 e 65535", "65534..65535 1..1 "},
      // a shorter list, and none
      {0, "r5 30 e p 7 p 0 p u p", "1..5 6/6 6..7 2/2 none 2/2 u1 1/2 "},
      // pages are counted anew only with another number of rows
      {0, "r5 30 e r10 30 p r40 30 p", "1..5 21..30 6/6 -9..30 6/6 "},
      {1, "r5 30 e r10 30 p", "26..30 1..-20 6/6 "},
      {0, "r1 65535 e r65535 65535", "1..1 1..65535 "},  // a product beyond 32 bits
      {1, "r1 65535 e r65535 65535", "65535..65535 1..-2147483648 "},
  };
  for (const auto& row : cases) {
    CLuaParseModulePart part;
    part.nOrder = static_cast<std::uint16_t>(row.order);
    EXPECT_EQ(answersTo(part, row.steps), row.answers) << row.steps;
  }
}

TEST(SelectedIndex, CountsInTheWholeList) {
  const struct {
    int order, first, last, clickedRow, result, index;
  } cases[] = {
      {0, 6, 10, 0, 0, kUntouched},   // nothing selected
      {0, 6, 10, 2, 1, 7},            //
      {0, 11, 12, 2, 1, 12},          //
      {0, 11, 12, 3, 1, kUntouched},  // below the last row of the list
      {1, 8, 12, 1, 1, 12},           //
      {1, 1, 2, 2, 1, 1},             //
      {1, 1, 2, 3, 1, kUntouched},    //
      {0, -1, -1, 1, 1, -1},          // before the first update
      {0, -1, -1, 2, 1, kUntouched},  //
      {1, 1, INT32_MIN, 5, 1, kUntouched},
      {0, INT32_MAX, INT32_MAX, 5, 1, kUntouched},
      {2, 1, 5, 1, 1, kUntouched},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << "order " << row.order << ", " << row.first << " to "
                                    << row.last << ", clicked " << row.clickedRow);
    CLuaParseModulePart part;
    place(part, {0, 0, 100, 60});
    setRows(part, 5);
    part.nOrder = static_cast<std::uint16_t>(row.order);
    part.nFirstRow = row.first;
    part.nLastRow = row.last;
    click(part, 50, row.clickedRow * 10);
    int index = kUntouched;
    EXPECT_EQ(part.GetIndex(index), row.result);
    EXPECT_EQ(index, row.index);
  }
}

TEST(ColumnWidths, SetTheGridOrLeaveItAlone) {
  const struct {
    const char* widths;
    unsigned short cols;
    int result;
    std::vector<double> lines;  ///< on 400 pixels
  } cases[] = {
      {"1:2:1", 3, 1, {100, 300}}, {"1:2:1:", 3, 1, {100, 300}}, {"", 4, 1, {100, 200, 300}},
      {"0:0", 2, 1, {200}},        {"3:0:1", 3, 1, {300}},       {"9", 1, 1, {}},
      {"1:1:1", 3, 1, {133, 267}}, {"1:2:1", 2, 0, {200}},       {"12:1", 2, 0, {200}},
      {"2;1", 2, 0, {200}},        {":1:1", 2, 0, {200}},        {"1::", 1, 0, {200}},
      {" 1:1", 2, 0, {200}},       {"-1:1", 2, 0, {200}},        {nullptr, 2, 0, {200}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << (row.widths ? row.widths : "null") << ", " << row.cols);
    CLuaParseModulePart part;
    place(part, {0, 0, 400, 100});
    ASSERT_EQ(part.SetCell(3, 2, "1:1"), 1);
    part.onPLCRead(nullptr);
    EXPECT_EQ(part.SetCell(4, row.cols, row.widths), row.result);
    EXPECT_EQ(part.nPageRows, row.result == 1 ? 4 : 3);
    EXPECT_EQ(part.nCols, row.result == 1 ? row.cols : 2);
    EXPECT_EQ(part.onPLCRead(nullptr), row.result - 1);
    std::string svg;
    part.onFillPartShowAttr(svg, nullptr);
    EXPECT_EQ(Picture(svg).columnLines, row.lines);
  }
}

TEST(ColumnWidths, WrapTheirSumAt16Bits) {
  constexpr int kNines = 7281;
  std::string widths;
  for (int i = 0; i < kNines; ++i) widths += "9:";
  CLuaParseModulePart part;
  place(part, {0, 0, 90 * (kNines + 1), 100});
  // With a 7 at the end they sum up to 65536, which is 0 again: equal widths.
  EXPECT_EQ(part.SetCell(1, kNines + 1, (widths + "7").c_str()), 1);
  std::string svg;
  part.onFillPartShowAttr(svg, nullptr);
  EXPECT_EQ(Picture(svg).columnLines.back(), 90 * kNines);
  // The number of weights does not wrap.
  for (widths.clear(); widths.size() < 2 * 65536;) widths += "1:";
  EXPECT_EQ(part.SetCell(1, 0, widths.c_str()), 0);
}

TEST(Redraw, IsRequestedAtMostOnceIn100Milliseconds) {
  const struct {
    unsigned long long firstTick, secondTick;
    int second;
  } cases[] = {
      {0, 50, 0},
      {99, 198, 0},
      {99, 199, 1},
      {0xFFFFFFFFULL, 0x100000000ULL, 0},
      {0, 0x100000000ULL, 1},  // a difference with no low 32 bits
      {0, 0x100000063ULL, 1},
      {1000, 999, 1},  // the clock ran back
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.firstTick << ", " << row.secondTick);
    CLuaParseModulePart part;
    deskhost::setTickCount(row.firstTick);
    EXPECT_EQ(part.Refresh(), 1);
    EXPECT_EQ(part.onPLCRead(nullptr), 0);
    deskhost::setTickCount(row.secondTick);
    EXPECT_EQ(part.Refresh(), row.second);
    EXPECT_EQ(part.onPLCRead(nullptr), row.second - 1);
    EXPECT_EQ(part.nLastRefreshTick, row.second == 1 ? row.secondTick : row.firstTick);
  }
}

TEST(Redraw, IsHandedOverOnce) {
  CLuaParseModulePart part;
  place(part, {10, 10, 110, 70});
  EXPECT_EQ(part.onInit(nullptr), -1);
  EXPECT_EQ(part.onPLCRead(nullptr), -1);
  setRows(part, 5);
  EXPECT_EQ(part.onPLCRead(nullptr), 0);
  EXPECT_EQ(part.onPLCRead(nullptr), -1);
  click(part, 50, 40, 2);  // another kind of click
  click(part, 50, 15);     // the head
  EXPECT_EQ(part.onPLCRead(nullptr), -1);
  click(part, 50, 40);
  EXPECT_EQ(part.GetSelectedRow(), 3);
  EXPECT_EQ(part.onPLCRead(nullptr), 0);
  part.nOrder = 1;
  EXPECT_EQ(part.Reset(), 1);
  EXPECT_EQ(part.onPLCRead(nullptr), 0);
  EXPECT_EQ(part.nOrder, 0);
  EXPECT_EQ(part.nPageRows, 0);
  EXPECT_EQ(part.GetSelectedRow(), 0);
}

TEST(BodyText, IsReversedInTheCallersListInDescendingOrder) {
  for (const int order : {0, 1, 2}) {
    CLuaParseModulePart part;
    place(part, {0, 0, 400, 100});
    setRows(part, 2);
    part.nOrder = static_cast<std::uint16_t>(order);
    Rows rows{{"first"}, {"last"}};
    deskhost::setTickCount(1000);
    EXPECT_EQ(part.SetBodyText(rows.list()), 1);
    const std::string top = order == 1 ? "last" : "first";
    EXPECT_EQ(rows.list().front()->front(), top);
    std::string svg;
    EXPECT_EQ(part.onFillPartShowAttr(svg, nullptr), 0);
    EXPECT_THAT(Picture(svg).texts, ElementsAre(top, order == 1 ? "first" : "last"));
    EXPECT_EQ(part.SetBodyText(rows.list()), 0) << "a second one in the same 100 ms";
  }
}

}  // namespace
