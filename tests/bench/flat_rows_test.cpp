// What the bench compares must do the same work: equal rows.
#include "bench/flat_rows.h"

#include <gtest/gtest.h>

#include "bench/jobs.h"
#include "bench/made_job.h"
#include "bench/scan.h"
#include "module/query_commands.h"
#include "module/readers.h"
#include "tests/support/lua_harness.h"

namespace {

constexpr char kDescribe[] = R"(
return function(rows)
  local lines = {}
  for i, row in ipairs(rows) do
    local fields = {}
    for key, value in pairs(row) do fields[#fields + 1] = key .. '=' .. tostring(value) end
    table.sort(fields)
    lines[i] = table.concat(fields, ' ')
  end
  return table.concat(lines, '\n')
end)";

class FlatRowsTest : public test_support::LuaTest {
 protected:
  void SetUp() override {
    LuaTest::SetUp();
    for (const bool distinctWorks : {false, true})
      shapes_.emplace_back().distinctWorks = distinctWorks;
  }

  /// The rows that push() leaves on top of the stack, a line each.
  template <class Push>
  std::string rows(Push&& push) {
    EXPECT_EQ(luaL_dostring(L, kDescribe), LUA_OK);
    push();
    lua_call(L, 1, 1);
    const std::string text = lua_tostring(L, -1);
    lua_settop(L, 0);
    return text;
  }

  std::string answer(lua_CFunction command, const std::string& argument) {
    return rows([&] {
      lua_pushcfunction(L, command);
      lua_pushstring(L, argument.c_str());
      lua_call(L, 1, 1);
    });
  }

  std::vector<bench::Shape> shapes_;
};

TEST_F(FlatRowsTest, HoldWhatTheCommandsAnswer) {
  for (const bench::Shape& shape : shapes_) {
    bench::makeCurrent(shape);
    const bench::FlatWorks works(json.data);
    const bench::FlatCuts cuts(json.data);
    const bench::FlatLabels labels(json.data);
    EXPECT_EQ(works.count(), 480u);
    EXPECT_EQ(rows([&] { works.push(L); }), answer(getWorkCommand, ""));
    EXPECT_EQ(rows([&] { cuts.push(L); }), answer(getCutCommand, ""));
    EXPECT_EQ(rows([&] { labels.push(L); }), answer(getPrintCommand, ""));
  }
}

TEST_F(FlatRowsTest, ScanFindsTheWorksOfABarcode) {
  const bench::Shape& shape = shapes_.front();
  bench::makeCurrent(shape);
  for (const std::string& barCode :
       {bench::barCodeOf(0), bench::barCodeOf(100), std::string("?")}) {
    EXPECT_EQ(rows([&] {
                bench::pushScan(L, bench::jsonDocumentOf(shape));
                lua_pushstring(L, barCode.c_str());
                lua_call(L, 1, 1);
              }),
              answer(getWorkCommand, barCode));
  }
}

TEST(MadeJob, FillsTheSameRecordsFromBothFormats) {
  const bench::Shape shape;
  JsonAnalysis jsonReader;
  XmlAnalysis xmlReader;
  ASSERT_EQ(bench::readJson(jsonReader, bench::jsonDocumentOf(shape)), 0);
  xmlReader.analysisData(bench::xmlDocumentOf(shape).RootElement());
  ASSERT_EQ(jsonReader.data.Bar.size(), 20u);
  ASSERT_EQ(xmlReader.data.Bar.size(), 20u);
  const BAR_T& jsonBar = jsonReader.data.Bar.back();
  const BAR_T& xmlBar = xmlReader.data.Bar.back();
  ASSERT_EQ(jsonBar.piece.size(), xmlBar.piece.size());
  EXPECT_EQ(jsonBar.BarNumber, xmlBar.BarNumber);
  EXPECT_EQ(jsonBar.piece.back().BarCode, xmlBar.piece.back().BarCode);
  EXPECT_EQ(jsonBar.piece.back().work.back().Name, xmlBar.piece.back().work.back().Name);
  EXPECT_EQ(jsonBar.piece.back().work.back().PositionZ, xmlBar.piece.back().work.back().PositionZ);
}

}  // namespace
