// What keys hold and where they land, as far as no script can see it. What scripts see is in the
// sessions json_keys and json_carry_over.
#include <gtest/gtest.h>

#include "json/json_analysis.h"
#include "json/json_keys.h"
#include "tests/support/json_text.h"

namespace {

using test_support::jobWithPiece;
using test_support::parseJsonText;

TEST(JsonKeys, ProfiLavTakesIntegersOnlyAndPositionsAnyNumber) {
  const struct {
    const char* value;
    double profiLav;
    double position;
  } kRows[] = {
      {"3", 3.0, 3.0},
      {"3.5", -1.0, 3.5},
      {"18446744073709551615", -1.0, 18446744073709551615.0},
      {"'3'", -1.0, -1.0},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    reader.curWork.ProfiLav = reader.curWork.PositionX = -1.0;
    const std::string value = row.value;
    ASSERT_EQ(reader.analysisData(parseJsonText(
                  jobWithPiece("'work':[{'ProfiLav':" + value + ",'PositionX':" + value + "}]"))),
              0);
    const WORK_T& work = reader.data.Bar.at(0).piece.at(0).work.at(0);
    EXPECT_EQ(work.ProfiLav, row.profiLav) << value;
    EXPECT_EQ(work.PositionX, row.position) << value;
  }
}

TEST(JsonKeys, LabelFieldsLandWhereTheLabelLayoutsExpectThem) {
  const struct {
    const char* piece;
    const char* stored;  // Field1|Field2|Field5|Field10|Field11|Field14|Field15|Field19
  } kRows[] = {
      {"'Field1':'a','Field2':'b','Field5':'e','Field10':'j','Field11':'k','Field14':'n',"
       "'Field15':'o','Field19':'s'",
       "a|b|e|j|k|n|o|s"},
      {"'field1':'a','field10':'j','field11':'k','field14':'n','field15':'o','field19':'s'",
       "j||||n||s|"},
      {"'field19':'s','field1':'a'", "a||||||s|"},
      {"'field2':'b','Field5':'e','field11':'k'", "|||||||"},
      {"'Field1':1,'field1':'a','Field2':'b'", "a|b||||||"},
      {"'Field1':'a','Field2':2,'field2':'b'", "b|||||||"},
      {"'Field1':1,'field1':null,'Field2':'b'", "|||||||"},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    ASSERT_EQ(reader.analysisData(parseJsonText(jobWithPiece(row.piece))), 0);
    const FIELD_T& f = reader.data.Bar.at(0).piece.at(0).Fields;
    EXPECT_EQ(f.Field1 + "|" + f.Field2 + "|" + f.Field5 + "|" + f.Field10 + "|" + f.Field11 + "|" +
                  f.Field14 + "|" + f.Field15 + "|" + f.Field19,
              row.stored)
        << row.piece;
  }
}

TEST(JsonKeys, ALowerCaseLabelKeyFillsTheFirstFieldOfItsGroup) {
  for (int number = 1; number <= 19; ++number) {
    const std::string key = "field" + std::to_string(number);
    JsonAnalysis reader;
    ASSERT_EQ(reader.analysisField(parseJsonText("{'" + key + "':'" + key + "'}"), "1.0"), 0);
    const FIELD_T& f = reader.curField;
    EXPECT_EQ(number <= 10 ? f.Field1 : number <= 14 ? f.Field11 : f.Field15, key);
  }
}

TEST(JsonKeys, TextsAreKeptByteForByte) {
  JsonAnalysis reader;
  ASSERT_EQ(reader.analysisData(parseJsonText(jobWithPiece("'mark':'a\\u0000b'"))), 0);
  EXPECT_EQ(reader.data.Bar.at(0).piece.at(0).mark, std::string("a\0b", 3));
}

TEST(JsonKeys, TheNextFileKeepsTheHeaderThatItDoesNotBring) {
  JsonAnalysis reader;
  for (const char* header : {"'success':true,'Generator':'g','Unit':'mm'", "'Unit':'inch'"}) {
    ASSERT_EQ(reader.analysisData(parseJsonText(std::string("{'Version':'1.0',") + header + "}")),
              0);
  }
  EXPECT_TRUE(reader.data.success);
  EXPECT_EQ(reader.data.Generator + reader.data.Unit, "ginch");
}

}  // namespace
