// The query commands on jobs made in memory: what no job file brings about, and large jobs.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "module/load_commands.h"
#include "module/readers.h"
#include "module/registration.h"
#include "tests/support/lua_harness.h"

namespace {

class CommandsTest : public test_support::LuaTest {
 protected:
  void SetUp() override {
    LuaTest::SetUp();
    testing::internal::CaptureStdout();
    reg_cus_ParseModule(L);
    testing::internal::GetCapturedStdout();
    nFileType = fileTypeOf(model::JobFormat::Json);
    json.data = DATA_T();
    json.data.Version = "1.0";
    json.materialList.clear();
    xml.data = DATA_T();
  }
};

/// A bar of `count` pieces with `works` works each, whose barcodes begin with `prefix`.
BAR_T barOf(std::size_t count, std::size_t works, const std::string& prefix) {
  BAR_T bar;
  bar.BarNumber = "1";
  bar.MaxY = "60";
  bar.piece.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    bar.piece[i].BarCode = prefix + std::to_string(i);
    bar.piece[i].PieceNumber = std::to_string(i);
    bar.piece[i].work.resize(works);
  }
  return bar;
}

TEST_F(CommandsTest, AnUnknownFileTypeAnswersWithEmptyTables) {
  json.data.Bar.push_back(barOf(2, 2, "p"));
  nFileType = 2;
  EXPECT_EQ(run("local m = cus_ParseModule\n"
                "return #m.get_work('') .. #m.get_work('p0') .. #m.get_cut('') .. #m.get_cut('1')"
                " .. #m.get_hole() .. #m.get_print() .. #m.get_Dimensions('p0')"),
            "0000000");
  EXPECT_EQ(run("return cus_ParseModule.getjson_url('http://127.0.0.1:1/', 'name')"), "name");
}

TEST_F(CommandsTest, TextsEndAtAZeroByteOnTheWayToAndFromTheScript) {
  json.data.Bar.push_back(barOf(1, 1, "p"));
  json.data.Bar[0].piece[0].work[0].Name = std::string("drain\0slot", 10);
  EXPECT_EQ(run("return cus_ParseModule.get_work('p0\\0rest')[1].Name"), "drain");
}

TEST_F(CommandsTest, DimensionsShowOnlyTheRowsBehindTheLastWorkOfAnotherPiece) {
  const struct {
    const char* owners;  // the barcodes of the works, in file order
    const char* rows;
  } kRows[] = {{"AAA", "3"}, {"BA", "1"}, {"AB", "0"}, {"ABA", "1"}, {"AABAA", "2"}, {"B", "0"}};
  for (const auto& row : kRows) {
    json.data.Bar.assign(1, BAR_T());
    for (const char* owner = row.owners; *owner != '\0'; ++owner) {
      PIECE_CHILD_SECOND_T piece;
      piece.BarCode = *owner;
      piece.work.resize(1);
      json.data.Bar[0].piece.push_back(piece);
    }
    EXPECT_EQ(run("return #cus_ParseModule.get_Dimensions('A')"), row.rows) << row.owners;
  }
}

TEST_F(CommandsTest, PiecesAreToldApartByBarcodesOfTheSameHash) {
  const std::string one = "DEMO-0101 window", other = "AAAAADDA X:kxx%p";
  const std::hash<std::string> hash;
  if (hash(one) != hash(other)) GTEST_SKIP() << "another standard library, other hashes";
  json.data.Bar.push_back(barOf(2, 1, ""));
  std::vector<PIECE_CHILD_SECOND_T>& pieces = json.data.Bar[0].piece;
  pieces[0].BarCode = one, pieces[0].Length = "900";
  pieces[1].BarCode = other, pieces[1].Length = "800";
  EXPECT_EQ(run("return cus_ParseModule.get_work('')[2].Cut_Length"), "800");
}

TEST_F(CommandsTest, AMillionWorksOfOtherPiecesLeaveTheLuaStackAlone) {
  json.data.Bar.push_back(barOf(1000, 1000, "other"));
  json.data.Bar.push_back(barOf(1, 1, "wanted"));
  EXPECT_EQ(run("local rows = cus_ParseModule.get_Dimensions('wanted0')\n"
                "return #rows .. ' ' .. rows[1].MaxY"),
            "1 60");
}

TEST_F(CommandsTest, AllWorksOfALargeJobTakeOneWalk) {
  // A look-up per row would compare 200,000 barcodes for each of 200,000 rows: hours.
  json.data.Bar.push_back(barOf(200'000, 1, "piece"));
  EXPECT_EQ(run("local rows = cus_ParseModule.get_work('')\n"
                "return #rows .. ' ' .. rows[#rows].BarCode .. ' ' .. rows[#rows].MaxY"),
            "200000 piece199999 60");
}

TEST_F(CommandsTest, AFailedLookUpPrintsItsLineOncePerRow) {
  json.data.Bar.push_back(barOf(1, 2, "p"));
  json.data.Version = "2.0";
  testing::internal::CaptureStdout();
  EXPECT_EQ(run("local m = cus_ParseModule\n"
                "local all, own, sizes = m.get_work(''), m.get_work('p0'), m.get_Dimensions('p0')\n"
                "return #all .. all[2].MaxY .. #own .. #sizes .. sizes[1].Cut_Length"),
            "202");
  const std::string line = "Faild to find the BarCode,the BarCode is p0 \n";
  EXPECT_EQ(testing::internal::GetCapturedStdout(), line + line + line + line + line);
}

TEST(LoadMessage, TellsWhatFailedInEitherFormat) {
  for (const model::JobFormat format : {model::JobFormat::Json, model::JobFormat::Xml}) {
    EXPECT_STREQ(loadMessage(-5, format), "piece数据解析失败");
    EXPECT_STREQ(loadMessage(-6, format), "work数据解析失败");
  }
}

/// A job of few numbers, so that bars and pieces repeat within it and go missing from job to job.
DATA_T jobOfFewNumbers(std::mt19937& random) {
  DATA_T job;
  job.Version = "1.0";
  job.Bar.resize(random() % 4);
  for (BAR_T& bar : job.Bar) {
    bar.BarNumber = std::to_string(random() % 4);
    bar.piece.resize(random() % 3);
    for (std::size_t i = 0; i < bar.piece.size(); ++i) {
      bar.piece[i].PieceNumber = std::to_string(random() % 4 == 0 ? random() % 3 : i);
      bar.piece[i].BarCode = std::to_string(random());
    }
  }
  return job;
}

TEST_F(CommandsTest, CutsHaveTheBarcodesOfTheirNumbersWhateverWasAskedBefore) {
  std::mt19937 random(1);
  int jobsWithSharedNumbers = 0;
  for (int round = 0; round < 3000; ++round) {
    json.data = jobOfFewNumbers(random);
    std::map<std::string, std::map<std::string, std::string>> barCodes;
    std::vector<const std::string*> wanted;  // the last one of each pair of numbers
    for (const BAR_T& bar : json.data.Bar) {
      for (const PIECE_T& piece : bar.piece) {
        std::string& barCode = barCodes[bar.BarNumber][piece.PieceNumber];
        barCode = piece.BarCode;
        wanted.push_back(&barCode);
      }
    }
    std::string expected;
    for (const std::string* barCode : wanted) expected += *barCode + " ";
    run("return #cus_ParseModule.get_cut('1')");
    ASSERT_EQ(json.barCodeMap, barCodes) << "round " << round;
    ASSERT_EQ(run("local codes = ''\n"
                  "for _, row in ipairs(cus_ParseModule.get_cut('')) do\n"
                  "  codes = codes .. row.BarCode .. ' '\n"
                  "end\n"
                  "return codes"),
              expected)
        << "round " << round;
    ASSERT_EQ(json.barCodeMap, barCodes) << "round " << round;
    std::size_t numbers = 0;
    for (const auto& [bar, codes] : barCodes) numbers += codes.size();
    jobsWithSharedNumbers += numbers < wanted.size();
    if (random() % 8 == 0) json.getBarCode("1", "unknown");
  }
  EXPECT_GT(jobsWithSharedNumbers, 300);
  EXPECT_LT(jobsWithSharedNumbers, 2700);
}

}  // namespace
