// What stays from one element, and from one file, to the next.
#include <gtest/gtest.h>

#include "json/json_analysis.h"
#include "tests/support/json_text.h"

namespace {

using test_support::parseJsonText;

TEST(JsonCarryOver, MissingKeysKeepTheValueOfTheElementBeforeAtEveryLevel) {
  JsonAnalysis reader;
  ASSERT_EQ(reader.analysisData(parseJsonText(
                "{'Version':'1.0','Generator':'g','Bar':[{'BarNumber':1,'BarColor':'c','piece':[{"
                "'BarCode':'A','Field1':'f','Field3':'t','cut':{'Length':'9','sxB':'45'},"
                "'work':[{'Name':'w','PositionX':5},{'PositionY':6}]},"
                "{'PieceNumber':2}]},"
                "{'BarNumber':'2'}]}")),
            0);
  const BAR_T& second = reader.data.Bar.at(1);
  EXPECT_EQ(second.BarNumber + second.BarColor, "1c");
  EXPECT_TRUE(second.piece.empty());

  const std::vector<PIECE_CHILD_SECOND_T>& pieces = reader.data.Bar.at(0).piece;
  EXPECT_EQ(pieces.at(0).PieceNumber, "");
  EXPECT_EQ(pieces.at(1).BarCode + pieces.at(1).Fields.Field1 + pieces.at(1).Fields.Field3, "Aft");
  EXPECT_EQ(pieces.at(1).Length + pieces.at(1).sxB, "945");
  EXPECT_TRUE(pieces.at(1).work.empty());
  const WORK_T& work = pieces.at(0).work.at(1);
  EXPECT_EQ(work.Name, "w");
  EXPECT_EQ(work.PositionX, 5.0);
  EXPECT_EQ(work.PositionY, 6.0);
}

TEST(JsonCarryOver, NextFileKeepsHeaderAndElementsButNoBars) {
  JsonAnalysis reader;
  ASSERT_EQ(reader.analysisData(parseJsonText(
                "{'Version':'1.0','success':true,'Generator':'g','Unit':'mm','Bar':[{'MaxZ':70,"
                "'piece':[{'Customer':'c','cut':{'dxB':'135'},'work':[{'Name':'w'}]}]},{}]}")),
            0);
  ASSERT_EQ(reader.analysisData(
                parseJsonText("{'Version':'1.0','Unit':'inch','Bar':[{'piece':[{'work':[{}]}]}]}")),
            0);
  EXPECT_TRUE(reader.data.success);
  EXPECT_EQ(reader.data.Generator + reader.data.Unit, "ginch");
  ASSERT_EQ(reader.data.Bar.size(), 1u);
  const BAR_T& bar = reader.data.Bar[0];
  ASSERT_EQ(bar.piece.size(), 1u);
  EXPECT_EQ(bar.MaxZ + bar.piece[0].Customer + bar.piece[0].dxB, "70c45");
  ASSERT_EQ(bar.piece[0].work.size(), 1u);
  EXPECT_EQ(bar.piece[0].work[0].Name, "w");
}

TEST(JsonCarryOver, FailedReadsLeaveWhatTheirLevelSays) {
  JsonAnalysis reader;
  const auto refill = [&] {
    return reader.analysisData(parseJsonText("{'Version':'1.0','Name':'old','Bar':[{},{}]}"));
  };
  ASSERT_EQ(refill(), 0);
  EXPECT_EQ(reader.analysisData(parseJsonText("{'Version':'2.0','Name':'new','Bar':[{}]}")), -3);
  EXPECT_EQ(reader.data.Version + reader.data.Name, "1.0old");
  EXPECT_TRUE(reader.data.Bar.empty());

  ASSERT_EQ(refill(), 0);
  EXPECT_EQ(reader.analysisData(
                parseJsonText("{'Version':'2.0','version':'1.0','Name':'new','Bar':[{}]}")),
            -4);
  EXPECT_EQ(reader.data.Version + reader.data.Name, "2.0new");
  EXPECT_TRUE(reader.data.Bar.empty());

  ASSERT_EQ(refill(), 0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(reader.jsonAnalysis("/no/such/job.json"), -2);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "read File error.............\n");
  EXPECT_EQ(reader.data.Bar.size(), 2u);
}

}  // namespace
