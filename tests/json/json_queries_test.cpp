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

TEST(JsonQueries, WorksOfABarcodeComeFromEveryPieceThatBearsIt) {
  JsonAnalysis reader = sampleReader();
  std::string found;
  for (const WORK_T& work : reader.getWork("A")) found += work.Name + " ";
  EXPECT_EQ(found, "drain hinge drain ");
  EXPECT_TRUE(reader.getWork("B").empty());
  EXPECT_TRUE(reader.getWork("a").empty());
  EXPECT_EQ(reader.getAllWork().size(), 3u);
  EXPECT_EQ(reader.getAllWork().back().first, "A");
}

TEST(JsonQueries, CutsCarryTheCountOfTheirOwnBarAndNumbersOnlyWhenAllAreAsked) {
  JsonAnalysis reader = sampleReader();
  const auto text = [](const RETURNACUT_T& row) {
    return row.BarNumber + "," + row.Length + "," + row.CutLength + "," + row.SxB + "," + row.DxB +
           "," + row.CutNumBer + "," + row.OrderCode + "," + row.BarName + "," + row.PieceNumber;
  };
  std::string ofBar;
  for (const RETURNACUT_T& row : reader.getCut("2")) ofBar += text(row) + "\n";
  EXPECT_EQ(ofBar,
            "2,6000,900,45,90,2,o,frame,\n2,6000,900,45,90,2,o,frame,\n"
            "2,6000,500,45,90,1,o,frame,\n");
  std::string all;
  for (const RETURNACUT_T& row : reader.getAllCut()) all += text(row) + "\n";
  EXPECT_EQ(all,
            "2,6000,900,45,90,2,o,frame,1\n2,6000,900,45,90,2,o,frame,2\n"
            "2,6000,500,45,90,1,o,frame,1\n3,6000,500,45,90,1,o,frame,7\n");
}

TEST(JsonQueries, MaterialCountIsTheHighestNumberOfBarsWithPieces) {
  JsonAnalysis reader = sampleReader();
  EXPECT_EQ(reader.getMaterialCount(), 0);
  reader.getAllCut();
  EXPECT_EQ(reader.getMaterialCount(), 3);
  EXPECT_EQ(reader.materialList, (std::vector<int>{2, 2, 2, 3}));

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

TEST(JsonQueries, DimensionsAreThoseOfTheFirstPieceInFileOrder) {
  JsonAnalysis reader = sampleReader();
  std::string height, y, z, length;
  EXPECT_EQ(reader.getMaxYZ_Cutlength("A", y, z, length), 0);
  EXPECT_EQ(y + " " + z + " " + length, "60 70 900");
  EXPECT_EQ(reader.getHeight(height), 0);
  EXPECT_EQ(height, "70");
  reader.data.Bar.clear();
  EXPECT_EQ(reader.getHeight(y), -1);
  EXPECT_EQ(y, "60");
}

TEST(JsonQueries, HolesAreDistinctByNameAndKeepTheirFirstDimensions) {
  JsonAnalysis reader = sampleReader();
  for (int round = 0; round < 2; ++round) {
    const std::vector<tagHOHEINFO> holes = reader.getHole();
    ASSERT_EQ(holes.size(), 2u);
    EXPECT_EQ(holes[0].name + " " + holes[1].name, "drain hinge");
    EXPECT_EQ(holes[0].length, 900.0);
    EXPECT_EQ(holes[0].width, 60.0);
    EXPECT_EQ(holes[0].height, 70.0);
  }
  reader.data.Bar[1].piece[0].work[0].Name = "slot";
  reader.data.Bar[1].MaxY = "";
  EXPECT_THROW(reader.getHole(), std::invalid_argument);
  EXPECT_EQ(reader.holeList.size(), 2u);
  reader.data.Bar[1].MaxY = "1e999";
  EXPECT_THROW(reader.getHole(), std::out_of_range);
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

TEST(JsonQueries, LabelsHaveThirteenSlotsOfWhichSevenAreFilled) {
  JsonAnalysis reader = sampleReader();
  reader.data.Bar[0].DXF_Name = "dxf";
  reader.data.Bar[0].BarColor = "white";
  reader.data.Bar[0].BarLeftLength = "12";
  reader.data.Bar[0].piece[0].mark = "m";
  reader.data.Bar[0].piece[0].cut_angle_convert = "/\\";
  const PRINT_T row = reader.getPrint().front();
  EXPECT_EQ(row.sProfileCode + "|" + row.sProfileName + "|" + row.sProfileLength + "|" +
                row.sNameProduct + "|" + row.sColor + "|" + row.sLengthProduct + "|" +
                row.sCutAngle,
            "m|dxf|6000|frame|white|12|/\\");
  EXPECT_EQ(row.sIndoorColor + row.sOutdoorColor + row.sPosition + row.sWindow + row.sProcess +
                row.sMaterialHeight,
            "");
}

}  // namespace
