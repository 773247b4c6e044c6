// Which bars a drawing shows once, what it calls them, and how one of them looks on a page.
#include <gmock/gmock.h>

#include "desk/draw/job_drawing.h"

namespace {

using namespace desk::draw;

/// Five equal bars with two pieces and a work.
DATA_T equalBars() {
  PIECE_CHILD_SECOND_T piece;
  piece.PieceNumber = "1";
  piece.BarCode = "A";
  piece.Length = "600";
  piece.sxB = piece.dxB = "90";
  WORK_T work;
  work.Name = "Lock";
  work.ProfiLav = 1.0;
  work.PositionX = 30.0;
  piece.work = {work};
  BAR_T bar;
  bar.MaxY = "65";
  bar.length = "6000";
  bar.piece = {piece, piece};
  DATA_T job;
  for (const char* number : {"1", "2", "3", "7", "9"}) {
    bar.BarNumber = number;
    job.Bar.push_back(bar);
  }
  return job;
}

std::vector<std::string> namesIn(const DATA_T& job) {
  std::vector<std::string> names;
  const std::vector<BarPlace> bars = judgedBars(job, model::JobFormat::Json);
  for (const BarGroup& group : groupsOf(bars, EqualBars::Once)) {
    names.push_back(group.count() + group.name());
  }
  return names;
}

TEST(BarGroups, HoldWhatIsCutAlike) {
  const std::vector<std::string> kAll = {"5 x  Bars 1-3, 7, 9"};
  const std::vector<std::string> kApart = {"4 x  Bars 1, 2, 7, 9", "Bar 3"};
  EXPECT_EQ(namesIn(equalBars()), kAll);
  const struct {
    void (*change)(BAR_T&);
    bool isApart;
  } kCases[] = {
      {[](BAR_T& bar) { bar.piece[1].BarCode = "B"; }, false},
      {[](BAR_T& bar) { bar.piece[1].Customer = "B"; }, false},
      {[](BAR_T& bar) { bar.BarLeftLength = "4800.4"; }, false},  // not shown: it is right
      {[](BAR_T& bar) { bar.BarLeftLength = "4790"; }, true},
      {[](BAR_T& bar) { bar.BarName = "B"; }, true},
      {[](BAR_T& bar) { bar.DXF_Name = "B"; }, true},
      {[](BAR_T& bar) { bar.BarColor = "B"; }, true},
      {[](BAR_T& bar) { bar.MaxY = "66"; }, true},
      {[](BAR_T& bar) { bar.MaxZ = "66"; }, true},
      {[](BAR_T& bar) { bar.length = "6500"; }, true},
      {[](BAR_T& bar) { bar.piece.pop_back(); }, true},
      {[](BAR_T& bar) { bar.piece[1].Num = "many"; }, true},  // a remark
      {[](BAR_T& bar) { bar.piece[1].PieceNumber = "2"; }, true},
      {[](BAR_T& bar) { bar.piece[1].Length = "600.01"; }, true},
      {[](BAR_T& bar) { bar.piece[1].sxB = "45"; }, true},
      {[](BAR_T& bar) { bar.piece[1].dxB = "45"; }, true},
      {[](BAR_T& bar) { std::swap(bar.piece[1].PieceNumber, bar.piece[1].mark); }, true},
      {[](BAR_T& bar) { bar.piece[1].work.clear(); }, true},
      {[](BAR_T& bar) { bar.piece[1].work[0].Name = "B"; }, true},
      {[](BAR_T& bar) { bar.piece[1].work[0].ProfiLav = 2.0; }, true},
      {[](BAR_T& bar) { bar.piece[1].work[0].PositionX = 30.001; }, true},
      {[](BAR_T& bar) { bar.piece[1].work[0].PositionY = 0.001; }, true},
      {[](BAR_T& bar) { bar.piece[1].work[0].PositionZ = 0.001; }, true},
  };
  for (const auto& row : kCases) {
    DATA_T job = equalBars();
    row.change(job.Bar[2]);
    EXPECT_EQ(namesIn(job), row.isApart ? kApart : kAll) << &row - kCases;
  }
}

TEST(BarGroups, AreDrawnAloneForAPageThatKnowsNoInlineStyle) {
  DATA_T job = equalBars();
  job.Bar[0].piece.resize(1);
  const std::vector<BarPlace> bars = judgedBars(job, model::JobFormat::Json);
  const JobDrawing drawing({"", "a.json", ""}, bars, EqualBars::Once);
  ASSERT_EQ(drawing.groups().size(), 2u);
  const std::string svg = drawing.group(1);
  EXPECT_THAT(svg, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"297\" "));
  for (const char* part : {" style=", "<style"}) {
    EXPECT_THAT(svg, testing::Not(testing::HasSubstr(part)));
  }
  for (const char* part :
       {"<g data-bar=\"2\"><title>4 x  Bars 2, 3, 7, 9; each: 2 pieces",
        "<g data-piece=\"2.2\"><title>1: 600, A</title>",
        " data-work=\"2.2.1\"><title>Lock: side 1, X 30, Y 0, Z 0</title>",
        "<polygon class=\"piece\" fill=\"#cfe0f0\""}) {
    EXPECT_THAT(svg, testing::HasSubstr(part));
  }
}

}  // namespace
