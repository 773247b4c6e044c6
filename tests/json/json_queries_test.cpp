// The queries as members of the reader; scripts see them through tests of the commands.
#include <gtest/gtest.h>

#include <stdexcept>

#include "json/json_analysis.h"
#include "tests/support/json_text.h"

namespace {

using test_support::parseJsonText;

/// A reader with two bars of number 2, one of number 10 without pieces, and one of number 3.
JsonAnalysis sampleReader() {
  JsonAnalysis reader;
  EXPECT_EQ(
      reader.analysisData(parseJsonText(
          "{'Version':'1.0','Bar':["
          "{'BarNumber':2,'MaxY':60,'MaxZ':70,'length':6000,'BarName':'frame','piece':["
          "{'PieceNumber':1,'BarCode':'A','order_code':'o','cut':{'Length':'900','sxB':'45','dxB':"
          "'90'},'work':[{'Name':'drain','PositionX':1},{'Name':'hinge','PositionX':2}]},"
          "{'PieceNumber':2,'BarCode':'B'}]},"
          "{'BarNumber':2,'MaxY':61,'piece':[{'PieceNumber':1,'BarCode':'A','cut':{'Length':'500'},"
          "'work':[{'Name':'drain','PositionX':3}]}]},"
          "{'BarNumber':10},"
          "{'BarNumber':3,'piece':[{'PieceNumber':7,'BarCode':'C'}]}]}")),
      0);
  return reader;
}

TEST(JsonQueries, MaterialCountIsTheHighestNumberOfBarsWithPieces) {
  JsonAnalysis reader = sampleReader();
  EXPECT_EQ(reader.getMaterialCount(), 0);
  reader.getAllCut();
  EXPECT_EQ(reader.getMaterialCount(), 3);
  EXPECT_EQ(reader.materialList, (std::vector<int>{2, 2, 2, 3}));
  EXPECT_EQ(reader.getAllCut().front().OrderCode + reader.getAllWork().back().first, "oA");

  reader.data.Bar[0].BarNumber = "-3";
  reader.data.Bar[1].BarNumber = " -1";
  reader.data.Bar[3].BarNumber = "-2abc";
  reader.getAllCut();
  EXPECT_EQ(reader.getMaterialCount(), -1);
}

TEST(JsonQueries, BarNumbersThatAreNoneLeaveTheNumbersBeforeThem) {
  JsonAnalysis reader = sampleReader();
  reader.data.Bar[1].BarNumber = "abc";
  EXPECT_THROW(reader.getAllCut(), std::invalid_argument);
  EXPECT_EQ(reader.materialList, (std::vector<int>{2, 2}));
  reader.data.Bar[1].BarNumber = "2147483648";
  EXPECT_THROW(reader.getAllCut(), std::out_of_range);
  EXPECT_EQ(reader.getMaterialCount(), 2);
}

TEST(JsonQueries, AnotherVersionAnswersOnlyWhatHasNoGate) {
  JsonAnalysis reader = sampleReader();
  reader.data.Version = "1.00";
  std::string height = "h", y = "y", z = "z", length = "l";
  EXPECT_TRUE(reader.getWork("A").empty() && reader.getCut("2").empty());
  EXPECT_EQ(reader.getHeight(height), -1);
  testing::internal::CaptureStdout();
  EXPECT_EQ(reader.getMaxYZ_Cutlength("A", y, z, length), -1);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Faild to find the BarCode,the BarCode is A \n");
  EXPECT_EQ(height + y + z + length, "hyzl");
  EXPECT_EQ(reader.getAllWork().size(), 3u);
  EXPECT_EQ(reader.getAllCut().size(), 4u);
  EXPECT_EQ(reader.getHole().size(), 2u);
  EXPECT_EQ(reader.getPrint().size(), 4u);
}

TEST(JsonQueries, BarcodesAreLookedUpByBothNumbersAndTheLastPieceWins) {
  JsonAnalysis reader = sampleReader();
  EXPECT_EQ(reader.getBarCode("2", "2"), "");
  reader.getAllBarCodeToMap();
  EXPECT_EQ(reader.barCodeMap.size(), 2u);
  EXPECT_EQ(reader.getBarCode("2", "2"), "B");
  EXPECT_EQ(reader.getBarCode("3", "7"), "C");
  EXPECT_EQ(reader.getBarCode("10", "1"), "");
  EXPECT_EQ(reader.barCodeMap.count("10"), 1u);
  reader.data.Bar[1].piece[0].BarCode = "last";
  reader.getAllBarCodeToMap();
  EXPECT_EQ(reader.getBarCode("2", "1"), "last");
  EXPECT_EQ(reader.barCodeMap.count("10"), 0u);
}

}  // namespace
