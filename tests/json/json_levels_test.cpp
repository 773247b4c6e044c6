// Result codes, the lines that go with them, and documents of the wrong shape.
#include <gtest/gtest.h>

#include "json/json_analysis.h"
#include "tests/support/json_text.h"

namespace {

using test_support::parseJsonText;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

constexpr char kBarLine[] = "analysis bar error.............\n";
constexpr char kPieceLine[] = "analysis piece error.............\n";
constexpr char kWorkLine[] = "analysis work error.............\n";

TEST(JsonLevels, RootDecidesByTheVersionOfEitherSpellingButHandsDownTheStoredOne) {
  const struct {
    const char* root;
    int code;
    const char* lines;
    const char* version;
  } kRows[] = {
      {"{'Version':'1.0'}", 0, "", "1.0"},
      {"{'version':'1.0'}", 0, "", "1.0"},
      {"{'Version':1.0,'version':'1.0','Bar':[{}]}", 0, "", "1.0"},
      {"{'Version':'1.0','version':'2.0','Bar':[{}]}", 0, "", "1.0"},
      {"{'Version':'2.0','version':'1.0','Bar':[{}]}", -4, kBarLine, "2.0"},
      {"{'Version':'2.0','version':'1.0','Bar':[]}", -4, kBarLine, "2.0"},
      {"{'Version':'2.0','version':'1.0'}", 0, "", "2.0"},
      {"{'Version':'1.00'}", -3, "", "old"},
      {"{'Version':1.0}", -3, "", "old"},
      {"{}", -3, "", "old"},
      {"[]", -3, "", "old"},
      {"['Version','1.0']", -3, "", "old"},
      {"'1.0'", -3, "", "old"},
      {"1.0", -3, "", "old"},
      {"null", -3, "", "old"},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    reader.data.Version = "old";
    reader.data.Bar.resize(2);
    CaptureStdout();
    EXPECT_EQ(reader.analysisData(parseJsonText(row.root)), row.code) << row.root;
    EXPECT_EQ(GetCapturedStdout(), row.lines) << row.root;
    EXPECT_EQ(reader.data.Version, row.version) << row.root;
    EXPECT_LE(reader.data.Bar.size(), 1u) << row.root;
  }
}

TEST(JsonLevels, EveryLevelTestsTheVersionThatItIsHanded) {
  const Json::Value works = parseJsonText("[{'Name':'w'}]");
  const Json::Value piece = parseJsonText("{'Field1':'f','cut':{'sxB':'45'}}");
  JsonAnalysis reader;
  EXPECT_EQ(reader.analysisBar(parseJsonText("[{}]"), "2.0"), -4);
  EXPECT_EQ(reader.analysisPiece(parseJsonText("[{}]"), ""), -5);
  EXPECT_EQ(reader.analysisWork(works, "1.0 "), -6);
  EXPECT_EQ(reader.analysisField(piece, "2.0"), 0);
  EXPECT_EQ(reader.analysisCut(piece, "2.0"), 0);
  reader.curCut.dxB = "135";  // carried, and no cut in the piece
  EXPECT_EQ(reader.analysisCut(parseJsonText("{}"), "1.0"), 0);
  EXPECT_EQ(reader.curCut.dxB, "45");
  EXPECT_EQ(reader.curField.Field1 + reader.curCut.sxB, "");
  EXPECT_TRUE(reader.data.Bar.empty() && reader.curBar.piece.empty() &&
              reader.curPiece.work.empty());

  EXPECT_EQ(reader.analysisField(piece, "1.0"), 0);
  EXPECT_EQ(reader.analysisCut(piece, "1.0"), 0);
  EXPECT_EQ(reader.analysisWork(works, "1.0"), 0);
  EXPECT_EQ(reader.curField.Field1 + reader.curCut.sxB, "f45");
  EXPECT_EQ(reader.curPiece.work.size(), 1u);
}

TEST(JsonLevels, FailuresBelowAreReportedInnermostFirstAndAppendNothing) {
  // The levels below are handed the stored version, which a direct call leaves empty.
  JsonAnalysis reader;
  CaptureStdout();
  EXPECT_EQ(reader.analysisBar(parseJsonText("[{},{'piece':[]},{}]"), "1.0"), -5);
  EXPECT_EQ(GetCapturedStdout(), kPieceLine);
  EXPECT_EQ(reader.data.Bar.size(), 1u);

  CaptureStdout();
  EXPECT_EQ(reader.analysisPiece(parseJsonText("[{},{'work':[]},{}]"), "1.0"), -6);
  EXPECT_EQ(GetCapturedStdout(), kWorkLine);
  EXPECT_EQ(reader.curBar.piece.size(), 1u);
}

TEST(JsonLevels, OddElementsAreStillAppendedAtEveryLevel) {
  const char* const kOdd[] = {"null", "true",         "0",  "-1.5",          "'text'", "''", "[]",
                              "[[]]", "[1,'a',null]", "{}", "{'a':{'b':[]}}"};
  for (const char* odd : kOdd) {
    const std::string value = odd;
    JsonAnalysis reader;
    reader.data.Version = "1.0";
    const Json::Value odds = parseJsonText("[" + value + "," + value + "]");
    EXPECT_EQ(reader.analysisWork(odds, "1.0"), 0);
    EXPECT_EQ(reader.curPiece.work.size(), 2u) << odd;
    EXPECT_EQ(reader.analysisPiece(odds, "1.0"), 0);
    EXPECT_EQ(reader.curBar.piece.size(), 2u) << odd;
    EXPECT_EQ(reader.analysisBar(odds, "1.0"), 0);
    EXPECT_EQ(reader.data.Bar.size(), 2u) << odd;
    EXPECT_EQ(reader.analysisField(odds, "1.0") + reader.analysisCut(odds, "1.0"), 0);
    EXPECT_EQ(reader.analysisField(odds[0], "1.0") + reader.analysisCut(odds[0], "1.0"), 0);
  }
}

}  // namespace
