// What becomes of a text on its way into a cell.
#include "part/cell_text.h"

#include <gtest/gtest.h>

namespace {

TEST(CellText, HoldsOnlyWhatAPictureCan) {
  const struct {
    std::string text, clean;
  } cases[] = {
      {"Rahmen 45\u00B0 \u7A97\u6846 \U0001F4E6", "Rahmen 45\u00B0 \u7A97\u6846 \U0001F4E6"},
      {"a\tb\r\nc\x7F", "a b  c "},
      {std::string("a\0b", 3), "a b"},
      {"a\u0085b\u2028c", "a b c"},
      {"a\xFF"
       "b",
       "a\uFFFDb"},
      {"\xC0\xAF", "\uFFFD"},                        // overlong
      {"\xED\xA0\x80", "\uFFFD"},                    // half of a surrogate pair
      {"\xF4\x90\x80\x80", "\uFFFD"},                // beyond the last code point
      {"\xEF\xBF\xBE\xEF\xBF\xBF", "\uFFFD\uFFFD"},  // noncharacters
      {"\xE7\xAA", "\uFFFD"},                        // cut short
      {"\xE7\xAA"
       "a",
       "\uFFFD"
       "a"},
  };
  for (const auto& row : cases) EXPECT_EQ(Table::cleanText(row.text), row.clean) << row.clean;
}

TEST(CellText, IsCutBetweenCharactersWhenItDoesNotFit) {
  const struct {
    std::string text;
    int width;
    bool bold;
    std::string fitted;
  } cases[] = {
      // On an em of 10 pixels: a digit takes 6.4, a full-width character and the ellipsis 10.
      {"0000", 26, false, "0000"},
      {"0000", 25, false, "00\u2026"},
      {"0000", 26, true, "00\u2026"},
      {"0000", 10, false, "\u2026"},
      {"0000", 9, false, ""},
      {"0000", 0, false, ""},
      {"", 0, false, ""},
      {"\u7A97\u6846\u6599", 30, false, "\u7A97\u6846\u6599"},
      {"\u7A97\u6846\u6599", 29, false, "\u7A97\u2026"},
      {"\u7A97\u6846\u6599", 20, false, "\u7A97\u2026"},
      {"WWWW", 40, false, "WW\u2026"},
      {"iiii", 17, false, "iiii"},
      {"135\u00B0", 26, false, "135\u00B0"},
      {"e\u0301e\u0301e\u0301", 20, false, "e\u0301e\u0301e\u0301"},
      {"e\u0301e\u0301e\u0301", 19, false, "e\u0301\u2026"},
      {"e\u0301\u0301\u0301\u0301\u0301\u0301", 20, false, "e\u0301\u0301\u0301\u2026"},
      {"\U0001F4E6\U0001F4E6", 31, false, "\U0001F4E6\u2026"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.text << " on " << row.width);
    EXPECT_EQ(Table::fitText(row.text, row.width, {10, row.bold}), row.fitted);
  }
}

}  // namespace
