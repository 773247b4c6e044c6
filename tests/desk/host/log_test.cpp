#include "tests/desk/host/host_test.h"

TEST_F(HostTest, LogsOneVisibleLineWhateverANameHolds) {
  const struct {
    std::string text, line;
  } rows[] = {
      {"a\nb\r\tc", "a\\nb\\r\\tc"},
      {std::string("a\0b\x1b[31m\x7f", 9), "a\\x00b\\x1b[31m\\x7f"},
      {"切割 \xC3\xA9 \xF0\x9F\x94\xA7 \\", "切割 \xC3\xA9 \xF0\x9F\x94\xA7 \\"},
      {"C1 \xC2\x9B", "C1 \\xc2\\x9b"},
      {"\xC0\xAF \xED\xA0\x80 \xF4\x90\x80\x80 \xE5\x88",
       "\\xc0\\xaf \\xed\\xa0\\x80 \\xf4\\x90\\x80\\x80 \\xe5\\x88"},
  };
  for (const auto& row : rows) {
    desk::log(row.text);
    EXPECT_EQ(takeLog(), row.line + "\n");
  }
}

TEST(Log, GoesToStandardErrorUnlessASinkTakesIt) {
  testing::internal::CaptureStderr();
  desk::log("one");
  desk::setLogSink([](const std::string&) { throw 1; });
  desk::log("lost");
  desk::setLogSink({});
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cusdesk: one\n");
}
