// Whole pictures. UPDATE_EXPECTED=1 in the environment rewrites the expected ones.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "part/table_part.h"
#include "tests/part/picture.h"

namespace {

std::string pictureOf(CLuaParseModulePart& part) {
  std::string svg;
  part.onFillPartShowAttr(svg, nullptr);
  return svg;
}

void expectPicture(CLuaParseModulePart& part, const std::string& name) {
  const std::string path = std::string(CUS_TEST_DIR "/expected/") + name + ".svg";
  const std::string svg = pictureOf(part);
  if (std::getenv("UPDATE_EXPECTED") != nullptr) std::ofstream(path, std::ios::binary) << svg;
  std::ostringstream expected;
  expected << std::ifstream(path, std::ios::binary).rdbuf();
  EXPECT_EQ(svg, expected.str()) << path;
  EXPECT_EQ(pictureOf(part), svg) << "a second time";
}

class TablePicture : public testing::Test {
 protected:
  void SetUp() override {
    tagPARTINFO info{{20, 10, 420, 130}};
    part.onInit(&info);
    part.SetCell(3, 3, "1:2:1");
    part.DrawHeadText({"No.", "Profile", "Length mm"});
  }

  CLuaParseModulePart part;
};

TEST_F(TablePicture, OfAPageWithASelectedRow) {
  Rows rows{{"1", "\u7A97\u6846 Frame 70 <A&B>", "1250.5"},
            {"2", "A profile name that is far too long for its column", "998.0"},
            {"3", "\u7279\u522B\u957F\u7684\u578B\u6750\u540D\u79F0\u9700\u8981\u622A\u65AD", "75"},
            {"4", "not on this page", "0"}};
  part.SetBodyText(rows.list());
  part.onClick(0, CLICKPART_CLICK, {25, 75}, nullptr);
  expectPicture(part, "selected_row");
}

TEST_F(TablePicture, OfAShortLastPageInDescendingOrder) {
  part.nOrder = 1;
  Rows rows{{"1", "Frame", "1250.5", "beyond the grid"}, {"2"}};
  part.SetBodyText(rows.list());
  expectPicture(part, "last_page_descending");
}

TEST_F(TablePicture, WithoutAGrid) {
  part.Reset();
  expectPicture(part, "no_grid");
}

/// Texts that have broken pictures, parsers or layouts before.
const std::string kNaughty[] = {
    "",
    "</text></svg><rect width='9'/>",
    "]]>",
    "<!-- --> <!DOCTYPE svg [<!ENTITY e 'e'>]>",
    "&amp; &lt; &#0; &#x1F; &e; &",
    "\" ' ` \\ %s %n $(x) ; --",
    "a\nb\r\nc\td\ve\ff",
    std::string("\0\x01\x1B[31m\x7F", 8),
    "\u0080\u0085\u009F\u2028\u2029",
    "\xEF\xBF\xBE\xEF\xBF\xBF\xF0\x9F\xBF\xBE",
    "\xFF\xFE\x80\xC0\x80\xF5\x80\x80\x80",
    "\xED\xA0\xBD\xED\xB8\x80 \xE7\xAA",
    "\uFEFF\u200B\u202E\u2066 \u05E9\u05DC\u05D5\u05DD \u0645\u0631\u062D\u0628\u0627",
    "Z\u0300\u0301\u0302\u0303\u0304\u0305\u0306\u0307\u0308\u0309",
    std::string(100000, 'W'),
};

TEST(NaughtyTexts, StayTextsOfAWellFormedPicture) {
  const std::string path = testing::TempDir() + "naughty_table.svg";
  for (const std::string& naughty : kNaughty) {
    CLuaParseModulePart part;
    tagPARTINFO info{{0, 0, 800, 480}};
    part.onInit(&info);
    part.SetCell(2, 2, "9:1");
    part.DrawHeadText({naughty, naughty});
    Rows rows{{naughty, naughty}, {naughty, naughty}};
    part.SetBodyText(rows.list());
    const std::string svg = pictureOf(part);
    SCOPED_TRACE(naughty.substr(0, 100));
    EXPECT_EQ(Picture(svg).elements - static_cast<int>(Picture(svg).texts.size()), 10);
    std::ofstream(path, std::ios::binary) << svg;
    EXPECT_EQ(std::system((CUS_XMLLINT " --noout --nonet " + path).c_str()), 0);
  }
  std::remove(path.c_str());
}

}  // namespace
