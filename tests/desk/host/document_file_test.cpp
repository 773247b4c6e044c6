#include "desk/host/documents.h"

#include <sys/stat.h>

#include "tests/desk/host/host_test.h"

namespace {

/// The text of a file, or "refused: " and the reason.
std::string readBack(const std::string& file) {
  std::string text = "whatever was there";
  std::string reason;
  return deskhost::readDocumentFile(file, text, reason) ? text : "refused: " + reason;
}

}  // namespace

TEST_F(HostTest, ReadsAFileUpToTheBound) {
  const std::string file = tree.path("a.json");
  deskhost::settings().maxDocumentBytes = 100'000;
  for (const std::size_t size : {0U, 1U, 65'536U, 99'999U, 100'000U}) {
    const std::string text(size, '\0');
    tree.write("a.json", text);
    EXPECT_TRUE(readBack(file) == text) << size;
  }
  tree.write("a.json", std::string(100'001, 'x'));
  EXPECT_EQ(readBack(file),
            std::string("refused: larger than 100000 bytes; ") + deskhost::kOnlyHere);
}

TEST_F(HostTest, ReadsFilesWhoseSizeIsNotKnownBeforehand) {
  const std::string text = readBack("/proc/self/status");
  EXPECT_EQ(text.compare(0, 5, "Name:"), 0) << text;
  deskhost::settings().maxDocumentBytes = 10;
  EXPECT_EQ(readBack("/proc/self/status"),
            std::string("refused: larger than 10 bytes; ") + deskhost::kOnlyHere);
}

TEST_F(HostTest, ReadsRegularFilesOnlyAndNeverWaits) {
  const std::string pipe = tree.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const struct {
    std::string file, reason;
  } rows[] = {
      {pipe, "not a regular file"},
      {"/dev/zero", "not a regular file"},
      {tree.path("usb"), "Is a directory"},
      {tree.path("none"), "No such file or directory"},
  };
  for (const auto& row : rows) EXPECT_EQ(readBack(row.file), "refused: " + row.reason);
}
