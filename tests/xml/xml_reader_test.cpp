// What the XML reader takes, keeps and throws, as far as no script can see it. What scripts see is
// in the sessions xml_oddities, xml_errors and xml_version.
#include <gtest/gtest.h>

#include <ctime>

#include "tests/support/xml_text.h"

namespace {

using test_support::jobWithPiece;
using test_support::readXmlText;
using test_support::work;

const PIECE_CHILD_SECOND_T& firstPiece(const XmlAnalysis& reader) {
  return reader.data.Bar.at(0).piece.at(0);
}

TEST(XmlReader, EveryElementFillsItsField) {
  XmlAnalysis reader;
  ASSERT_EQ(readXmlText(reader,
                        "<AnyRoot success='true'><Version>1.0</Version><Generator>g</Generator>"
                        "<Unit>mm</Unit><Name>n</Name><Bar><DXF_Name>dxf</DXF_Name><BarName>bn"
                        "</BarName><Color>white</Color><BarNumber>12</BarNumber><MaxY>60</MaxY>"
                        "<MaxZ>70.5</MaxZ><Length>6000</Length><LeftLength>99</LeftLength>"
                        "<Sortingcode>s</Sortingcode><BarType>1</BarType><BarCad>c</BarCad>"
                        "<Piece><PieceNumber>3</PieceNumber><Num>4</Num><BarCode>A</BarCode>"
                        "<Cut><Length>900</Length><sxB>45</sxB><dxB>135</dxB></Cut>"
                        "<CtrsX>x</CtrsX><CtrsYp>yp</CtrsYp><CtrsYm>ym</CtrsYm><CtrsZ>z</CtrsZ>"
                        "<Mirror>m</Mirror><Extra_Pie>e</Extra_Pie><Customer>c</Customer>"
                        "<OrderCode>o</OrderCode><holing_type>h</holing_type><mark>k</mark>"
                        "<Field1>f</Field1><plan_code>p</plan_code>" +
                            work("drain", "12.5mm") + "</Piece></Bar></AnyRoot>"),
            0);
  const DATA_T& job = reader.data;
  EXPECT_EQ(job.Version + job.Generator + job.Unit + job.Name, "1.0gmmn");
  EXPECT_FALSE(job.success);
  const BAR_T& bar = job.Bar.at(0);
  EXPECT_EQ(bar.DXF_Name + "," + bar.BarName + "," + bar.BarColor + "," + bar.BarNumber + "," +
                bar.MaxY + "," + bar.MaxZ + "," + bar.length + "," + bar.BarLeftLength,
            "dxf,bn,white,12,60,70.5,6000,99");
  EXPECT_EQ(bar.Sortingcode + bar.BarType + bar.BarCad, "");
  const PIECE_CHILD_SECOND_T& piece = firstPiece(reader);
  EXPECT_EQ(piece.PieceNumber + "," + piece.Num + "," + piece.BarCode + "," + piece.Length + "," +
                piece.sxB + "," + piece.dxB + "," + piece.CtrsX + "," + piece.CtrsYp + "," +
                piece.Mirror + "," + piece.Extra_Pie + "," + piece.Customer + "," +
                piece.order_code,
            "3,4,A,900,45,135,x,yp,m,h,c,o");
  EXPECT_EQ(piece.CtrsYm + piece.mark + piece.Fields.Field1 + piece.plan_code, "");
  const WORK_T& found = piece.work.at(0);
  EXPECT_EQ(found.Name, "drain");
  EXPECT_EQ(found.ProfiLav, 2.0);
  EXPECT_EQ(found.PositionX, 12.5);
  EXPECT_EQ(found.PositionY, -3.5);
  EXPECT_EQ(found.PositionZ, 40.0);
}

TEST(XmlReader, ExtraPieHoldsTheHolingTypeAndNothingElse) {
  XmlAnalysis reader;
  readXmlText(reader, jobWithPiece("<holing_type>h</holing_type><Extra_Pie>e</Extra_Pie>"));
  EXPECT_EQ(firstPiece(reader).Extra_Pie, "h");
  readXmlText(reader, jobWithPiece("<Extra_Pie>e</Extra_Pie>"));
  EXPECT_EQ(firstPiece(reader).Extra_Pie, "h") << "carried over, not taken from Extra_Pie";
}

/// The text of what a read throws, with its kind in front.
std::string thrownBy(XmlAnalysis& reader, const std::string& document) {
  try {
    return std::to_string(readXmlText(reader, document));
  } catch (const std::invalid_argument& error) {
    return std::string("invalid: ") + error.what();
  } catch (const std::out_of_range& error) {
    return std::string("range: ") + error.what();
  } catch (const std::logic_error& error) {
    return std::string("logic: ") + error.what();
  }
}

TEST(XmlReader, RequiredTextsAndNumbersThrowWhatScriptsKnow) {
  const std::string missing = "logic: basic_string::_M_construct null not valid";
  const std::string bars = "<Job><Bar><Piece>";
  EXPECT_EQ(thrownBy(*std::make_unique<XmlAnalysis>(), bars + "</Piece></Bar></Job>"), missing);
  EXPECT_EQ(
      thrownBy(*std::make_unique<XmlAnalysis>(), bars + "<CtrsZ> </CtrsZ></Piece></Bar></Job>"),
      missing);
  const struct {
    std::string work;
    std::string thrown;
  } kRows[] = {
      {work("w", ""), missing},
      {work("w", "  "), missing},
      {"<Work/>", missing},
      {"<Work><ProfiLav>1</ProfiLav><PositionX>1</PositionX><PositionY>1</PositionY></Work>",
       missing},
      {work("w", "abc"), "invalid: stod"},
      {work("w", "1e999"), "range: stod"},
      {work("w", " \n0x10 tail"), "0"},
      {work("w", "-inf"), "0"},
  };
  for (const auto& row : kRows) {
    XmlAnalysis reader;
    EXPECT_EQ(thrownBy(reader, jobWithPiece(row.work)), row.thrown) << row.work;
  }
}

TEST(XmlReader, BrokenReadsKeepFinishedBarsAndLeakNothingIntoTheNextJob) {
  XmlAnalysis reader;
  const std::string good = "<Piece><CtrsZ>0</CtrsZ>" + work("good") + "</Piece>";
  const std::string bad = "<Piece><BarCode>bad</BarCode><CtrsZ>0</CtrsZ><Customer>seen</Customer>" +
                          work("first") + work("second", "abc") + "</Piece>";
  EXPECT_EQ(thrownBy(reader, "<Job><Version>1.0</Version><Bar>" + good + "</Bar><Bar>" + good +
                                 bad + good + "</Bar></Job>"),
            "invalid: stod");
  ASSERT_EQ(reader.data.Bar.size(), 1u);
  EXPECT_EQ(firstPiece(reader).work.size(), 1u);

  ASSERT_EQ(readXmlText(reader, jobWithPiece(work("next"))), 0);
  ASSERT_EQ(reader.data.Bar.size(), 1u);
  ASSERT_EQ(reader.data.Bar[0].piece.size(), 1u);
  ASSERT_EQ(firstPiece(reader).work.size(), 1u);
  EXPECT_EQ(firstPiece(reader).work[0].Name, "next");
  EXPECT_EQ(firstPiece(reader).BarCode + firstPiece(reader).Customer, "badseen");
}

TEST(XmlReader, ValuesInFrontOfARequiredTextAreCarriedOverFromABrokenRead) {
  XmlAnalysis reader;
  thrownBy(reader,
           "<Job><Bar><Piece><Customer>behind</Customer><CtrsX>before</CtrsX>"
           "<Cut><sxB>45</sxB></Cut></Piece></Bar></Job>");
  EXPECT_EQ(reader.curPiece.CtrsX + reader.curPiece.sxB + reader.curPiece.Customer, "before45");
}

/// Processor time that a job takes to read.
std::clock_t timeOf(const std::string& text) {
  XmlAnalysis reader;
  const std::clock_t start = std::clock();
  EXPECT_EQ(readXmlText(reader, text), 0);
  EXPECT_EQ(reader.data.Version, "1.0");
  EXPECT_EQ(reader.data.Bar.size(), 30'000u);
  return std::clock() - start;
}

TEST(XmlReader, HeaderBehindManyBarsTakesTimeThatGrowsWithTheFile) {
  // Once per bar instead of once per file, this would look at 900 million elements.
  const std::string header =
      "<Generator>g</Generator><Unit>u</Unit><Name>n</Name><Version>1.0</Version>";
  std::string bars;
  for (int i = 0; i < 30'000; ++i) bars += "<Bar/>";
  const std::clock_t before = timeOf("<Job>" + header + bars + "</Job>");
  EXPECT_LT(timeOf("<Job>" + bars + header + "</Job>"), 8 * before);
}

}  // namespace
