// Elements are found by name wherever they stand, the first of each name.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/support/xml_text.h"
#include "xml/xml_elements.h"

namespace {

using tinyxml2::XMLElement;

/// Children of a piece in any order: most of the known ones, some twice, some strangers, cuts and
/// works among them. Every text is different.
std::string shuffledPiece(std::mt19937& random) {
  std::vector<std::string> names = {"CtrsZ", "Stranger", "Field1", "Cut", "Cut", "Work", "Work"};
  for (const auto& key : xml_elements::kPiece) {
    for (unsigned times = random() % 8 == 0 ? 0 : 1 + random() % 2; times > 0; --times) {
      names.push_back(key.spelling);
    }
  }
  // From hardly disturbed to any order at all.
  for (std::size_t swaps = random() % names.size(); swaps > 0; --swaps) {
    std::swap(names[random() % names.size()], names[random() % names.size()]);
  }
  std::string text;
  for (const std::string& name : names) {
    const std::string number = std::to_string(random() % 1000);
    text += name == "Work"  ? test_support::work("w" + number)
            : name == "Cut" ? "<Cut><dxB>d" + number + "</dxB><sxB>s" + number + "</sxB></Cut>"
                            : "<" + name + ">" + number + "</" + name + ">";
  }
  return "<Piece>" + text + "</Piece>";
}

std::string textOfFirst(const XMLElement& parent, const char* name) {
  const XMLElement* const child = parent.FirstChildElement(name);
  return child == nullptr ? "" : child->GetText();
}

TEST(XmlOrder, TheFirstElementOfANameCountsInWhateverOrder) {
  std::mt19937 random(1);
  for (int round = 0; round < 500; ++round) {
    const std::string text = "<Job><Bar>" + shuffledPiece(random) + "</Bar></Job>";
    SCOPED_TRACE(text);
    tinyxml2::XMLDocument document;
    ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
    XMLElement& root = *document.RootElement();
    const XMLElement& piece = *root.FirstChildElement()->FirstChildElement();

    XmlAnalysis reader;
    reader.analysisData(&root);
    const PIECE_CHILD_SECOND_T& read = reader.data.Bar.at(0).piece.at(0);
    for (const auto& key : xml_elements::kPiece) {
      if (key.kind != model::KeyKind::Text) continue;
      EXPECT_EQ(read.*key.field.text, textOfFirst(piece, key.spelling)) << key.spelling;
    }
    EXPECT_EQ(read.sxB, textOfFirst(*piece.LastChildElement("Cut"), "sxB"));
    ASSERT_EQ(read.work.size(), 2u);
    EXPECT_EQ(read.work[0].Name, textOfFirst(*piece.FirstChildElement("Work"), "Name"));
    EXPECT_EQ(read.work[1].Name, textOfFirst(*piece.LastChildElement("Work"), "Name"));
  }
}

TEST(XmlOrder, EachLevelCanBeReadByItself) {
  tinyxml2::XMLDocument document;
  const std::string text = "<Job><Bar><Piece><CtrsZ>0</CtrsZ><Cut><sxB>45</sxB></Cut>" +
                           test_support::work("drain") +
                           "<Cut><sxB>90</sxB></Cut></Piece></Bar></Job>";
  ASSERT_EQ(document.Parse(text.c_str()), tinyxml2::XML_SUCCESS);
  XMLElement* const bar = document.RootElement()->FirstChildElement();
  XMLElement* const piece = bar->FirstChildElement();
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

}  // namespace
