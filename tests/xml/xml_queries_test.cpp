// Where the queries of the XML reader differ from those of the JSON reader.
#include <gtest/gtest.h>

#include "tests/support/xml_text.h"

namespace {

using test_support::readXmlText;
using test_support::work;

std::string pieceOf(const std::string& number, const std::string& barCode,
                    const std::string& works = "") {
  return "<Piece><PieceNumber>" + number + "</PieceNumber><BarCode>" + barCode +
         "</BarCode><CtrsZ>0</CtrsZ><Cut><Length>900</Length></Cut>" + works + "</Piece>";
}

TEST(XmlQueries, BarNumbersNeedNotBeNumbersAndTheLastPieceGivesTheBarcode) {
  XmlAnalysis reader;
  ASSERT_EQ(readXmlText(reader, "<Job><Version>1.0</Version><Bar><BarNumber>left</BarNumber>" +
                                    pieceOf("1", "A") + pieceOf("1", "B") + pieceOf("2", "C") +
                                    "</Bar></Job>"),
            0);
  ASSERT_EQ(reader.getAllCut().size(), 3u);
  EXPECT_EQ(reader.getAllCut().back().PieceNumber, "2");
  EXPECT_EQ(reader.getCut("left").back().PieceNumber, "");
  EXPECT_EQ(reader.getBarCode("left", "1"), "B");
  EXPECT_EQ(reader.scratchList, (std::list<std::string>{"A", "B"}));
  EXPECT_EQ(reader.getBarCode("left", "3"), "");
  EXPECT_TRUE(reader.scratchList.empty());
}

TEST(XmlQueries, HolesAreDistinctAndListedInTheScratchList) {
  XmlAnalysis reader;
  ASSERT_EQ(
      readXmlText(reader, "<Job><Version>1.0</Version><Bar><MaxY>60</MaxY><MaxZ>70</MaxZ>" +
                              pieceOf("1", "A", work("drain") + work("hinge") + work("drain")) +
                              "</Bar></Job>"),
      0);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(reader.getHole().size(), 2u);
    EXPECT_EQ(reader.scratchList, (std::list<std::string>{"drain", "hinge"}));
  }
}

}  // namespace
