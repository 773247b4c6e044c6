// What a key must hold to be taken, and where its value lands.
#include <gtest/gtest.h>

#include "json/json_analysis.h"
#include "json/json_keys.h"
#include "tests/support/json_text.h"

namespace {

using test_support::jobWithPiece;
using test_support::parseJsonText;

/// An object that holds, under every key of a table, a value that tells the key: its own spelling
/// for a text, its length for an integer.
template <class Record, std::size_t count>
Json::Value selfTelling(const model::Key<Record> (&keys)[count], bool second) {
  Json::Value object(Json::objectValue);
  for (const auto& key : keys) {
    const char* spelling = second && key.secondSpelling ? key.secondSpelling : key.spelling;
    const std::string name = key.spelling;
    const bool isText = key.kind == model::KeyKind::Text;
    object[spelling] = isText ? Json::Value(name) : Json::Value(static_cast<int>(name.size()));
  }
  return object;
}

#define EXPECT_OWN_TEXT(record, field) EXPECT_EQ((record).field, #field)
#define EXPECT_OWN_SIZE(record, field) \
  EXPECT_EQ((record).field, std::to_string(sizeof(#field) - 1)) << #field

void expectBar(const BAR_T& bar) {
  EXPECT_OWN_TEXT(bar, DXF_Name);
  EXPECT_OWN_TEXT(bar, BarName);
  EXPECT_OWN_TEXT(bar, BarColor);
  EXPECT_OWN_TEXT(bar, Sortingcode);
  EXPECT_OWN_TEXT(bar, BarCad);
  EXPECT_OWN_SIZE(bar, BarNumber);
  EXPECT_OWN_SIZE(bar, MaxY);
  EXPECT_OWN_SIZE(bar, MaxZ);
  EXPECT_OWN_SIZE(bar, length);
  EXPECT_OWN_SIZE(bar, BarLeftLength);
  EXPECT_OWN_SIZE(bar, BarType);
}

void expectPiece(const PIECE_CHILD_SECOND_T& piece) {
  EXPECT_OWN_SIZE(piece, PieceNumber);
  EXPECT_OWN_SIZE(piece, Num);
  EXPECT_OWN_SIZE(piece, Over_status);
  EXPECT_OWN_TEXT(piece, BarCode);
  EXPECT_OWN_TEXT(piece, order_code);
  EXPECT_OWN_TEXT(piece, Customer);
  EXPECT_OWN_TEXT(piece, Cc_code);
  EXPECT_OWN_TEXT(piece, Buyer);
  EXPECT_OWN_TEXT(piece, BuyAddress);
  EXPECT_OWN_TEXT(piece, time_car);
  EXPECT_OWN_TEXT(piece, CtrsX);
  EXPECT_OWN_TEXT(piece, CtrsYp);
  EXPECT_OWN_TEXT(piece, CtrsYm);
  EXPECT_OWN_TEXT(piece, Mirror);
  EXPECT_OWN_TEXT(piece, Extra_Pie);
  EXPECT_OWN_TEXT(piece, mark);
  EXPECT_OWN_TEXT(piece, plan_code);
  EXPECT_OWN_TEXT(piece, CarCode);
  EXPECT_OWN_TEXT(piece, Production_demand);
  EXPECT_OWN_TEXT(piece, cut_angle_convert);
  EXPECT_OWN_TEXT(piece, machine);
  EXPECT_OWN_TEXT(piece, allow_min_cut);
  EXPECT_OWN_TEXT(piece, boshan_value);
  EXPECT_OWN_TEXT(piece, shashan_value);
  EXPECT_OWN_TEXT(piece, project_addr);
}

TEST(JsonKeys, EveryKeyFillsTheFieldThatBearsItsNameInEitherSpelling) {
  for (const bool second : {false, true}) {
    SCOPED_TRACE(second ? "second spelling" : "first spelling");
    Json::Value root = selfTelling(json_keys::kHeader, second);
    root["success"] = true;
    root[second ? "version" : "Version"] = "1.0";
    Json::Value bar = selfTelling(json_keys::kBar, second);
    bar["piece"].append(selfTelling(json_keys::kPiece, second));
    root[second ? "bar" : "Bar"].append(bar);

    JsonAnalysis reader;
    ASSERT_EQ(reader.analysisData(root), 0);
    EXPECT_TRUE(reader.data.success);
    EXPECT_EQ(reader.data.Version, "1.0");
    EXPECT_OWN_TEXT(reader.data, code);
    EXPECT_OWN_TEXT(reader.data, message);
    EXPECT_OWN_TEXT(reader.data, Generator);
    EXPECT_OWN_TEXT(reader.data, Unit);
    EXPECT_OWN_TEXT(reader.data, Name);
    expectBar(reader.data.Bar.at(0));
    expectPiece(reader.data.Bar.at(0).piece.at(0));
  }
}

TEST(JsonKeys, SecondSpellingsAreTheOnesThatJobsUse) {
  JsonAnalysis reader;
  ASSERT_EQ(reader.analysisData(parseJsonText(
                "{'version':'1.0','bar':[{'dxF_Name':'dxf','barLeftLength':12,'piece':[{"
                "'pieceNumber':3,'machin':'M1','extra_Pie':'E','over_status':1,"
                "'cut':{'length':'900','sxB':'45','dxB':'90'},"
                "'work':[{'name':'w','profiLav':2,'positionX':1.5,'positionY':2,'positionZ':-3e1}]"
                "}]}]}")),
            0);
  const BAR_T& bar = reader.data.Bar.at(0);
  const PIECE_CHILD_SECOND_T& piece = bar.piece.at(0);
  const WORK_T& work = piece.work.at(0);
  EXPECT_EQ(bar.DXF_Name + bar.BarLeftLength, "dxf12");
  EXPECT_EQ(piece.PieceNumber + piece.machine + piece.Extra_Pie + piece.Over_status, "3M1E1");
  EXPECT_EQ(piece.Length + "|" + piece.sxB + "|" + piece.dxB, "900|45|90");
  EXPECT_EQ(work.Name, "w");
  EXPECT_EQ(work.ProfiLav, 2.0);
  EXPECT_EQ(work.PositionX, 1.5);
  EXPECT_EQ(work.PositionY, 2.0);
  EXPECT_EQ(work.PositionZ, -30.0);
}

TEST(JsonKeys, FirstSpellingWinsUnlessItsValueIsOfTheWrongKind) {
  const struct {
    const char* piece;
    const char* customer;
  } kRows[] = {
      {"'Customer':'first','customer':'second'", "first"},
      {"'customer':'second','Customer':'first'", "first"},
      {"'Customer':7,'customer':'second'", "second"},
      {"'Customer':null,'customer':'second'", "second"},
      {"'Customer':['first'],'customer':{}", ""},
      {"'CUSTOMER':'other'", ""},
      {"'Customer':''", ""},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    ASSERT_EQ(reader.analysisData(parseJsonText(jobWithPiece(row.piece))), 0);
    EXPECT_EQ(reader.data.Bar.at(0).piece.at(0).Customer, row.customer) << row.piece;
  }
}

TEST(JsonKeys, IntegersAreTakenByTheirValueAndStoredAsDecimalText) {
  const struct {
    const char* value;
    const char* stored;  // "old" where the value is no integer
  } kRows[] = {
      {"7", "7"},
      {"7.0", "7"},
      {"1e3", "1000"},
      {"-12", "-12"},
      {"-0.0", "0"},
      {"2147483647", "2147483647"},
      {"-2147483648", "-2147483648"},
      {"2147483648", "old"},
      {"-2147483649", "old"},
      {"7.5", "old"},
      {"'7'", "old"},
      {"true", "old"},
      {"null", "old"},
      {"[7]", "old"},
      {"1e300", "old"},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    reader.curPiece.Num = "old";
    ASSERT_EQ(reader.analysisData(parseJsonText(jobWithPiece(std::string("'Num':") + row.value))),
              0);
    EXPECT_EQ(reader.data.Bar.at(0).piece.at(0).Num, row.stored) << row.value;
  }
}

TEST(JsonKeys, WorkNumbersTakeIntegersAndFractionsButProfiLavIntegersOnly) {
  const struct {
    const char* value;
    double profiLav;
    double position;
  } kRows[] = {
      {"3", 3.0, 3.0},
      {"3.0", 3.0, 3.0},
      {"3.5", -1.0, 3.5},
      {"4294967296", -1.0, 4294967296.0},
      {"18446744073709551615", -1.0, 18446744073709551615.0},
      {"'3'", -1.0, -1.0},
      {"true", -1.0, -1.0},
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
      {"'Field1':'a','field2':'b','field5':'e'", "e|||||||"},
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

TEST(JsonKeys, RightAngleOf135IsStoredAs45) {
  const struct {
    const char* cut;
    const char* stored;
  } kRows[] = {
      {"{'Length':'900','sxB':'135','dxB':'135'}", "900|135|45"},
      {"{'sxB':'45','dxB':' 135'}", "|45| 135"},
      {"{'dxB':'135.0'}", "||135.0"},
      {"{'Length':'L','length':'l'}", "L||"},
      {"{'Length':900,'length':'l'}", "l||"},
      {"['135']", "||"},
      {"'135'", "||"},
  };
  for (const auto& row : kRows) {
    JsonAnalysis reader;
    ASSERT_EQ(reader.analysisData(parseJsonText(jobWithPiece(std::string("'cut':") + row.cut))), 0);
    const PIECE_T& piece = reader.data.Bar.at(0).piece.at(0);
    EXPECT_EQ(piece.Length + "|" + piece.sxB + "|" + piece.dxB, row.stored) << row.cut;
  }
}

TEST(JsonKeys, TextsAreKeptByteForByte) {
  JsonAnalysis reader;
  Json::Value root = parseJsonText(jobWithPiece("'BarCode':' 示例 ','mark':'a\\u0000b'"));
  ASSERT_EQ(reader.analysisData(root), 0);
  const PIECE_T& piece = reader.data.Bar.at(0).piece.at(0);
  EXPECT_EQ(piece.BarCode, " 示例 ");
  EXPECT_EQ(piece.mark, std::string("a\0b", 3));
}

}  // namespace
