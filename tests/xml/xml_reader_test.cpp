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

TEST(XmlReader, EachLevelCanBeReadByItself) {
  tinyxml2::XMLDocument document;
  const std::string text = "<Job><Bar><Piece><CtrsZ>0</CtrsZ><Cut><sxB>45</sxB></Cut>" +
                           work("drain") + "<Cut><sxB>90</sxB></Cut></Piece></Bar></Job>";
  ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
  tinyxml2::XMLElement* const bar = document.RootElement()->FirstChildElement();
  tinyxml2::XMLElement* const piece = bar->FirstChildElement();
  XmlAnalysis reader;
  EXPECT_EQ(reader.analysisCut(piece), 0);
  EXPECT_EQ(reader.analysisWork(piece), 0);
  EXPECT_EQ(reader.curPiece.sxB, "90");
  ASSERT_EQ(reader.curPiece.work.size(), 1u);
  EXPECT_EQ(reader.curPiece.work[0].Name, "drain");
  EXPECT_EQ(reader.analysisPiece(bar), 0);
  EXPECT_EQ(reader.curBar.piece.size(), 1u);
  EXPECT_EQ(reader.analysisBar(document.RootElement()), 0);
  EXPECT_EQ(reader.data.Bar.size(), 1u);
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
