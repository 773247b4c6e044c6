#include "desk/host/paths.h"

#include <json/value.h>

#include "host/cbl.h"
#include "host/media.h"
#include "tests/desk/host/host_test.h"

namespace fs = std::filesystem;

namespace {

std::string usbPath() {
  std::string path = "whatever was there";
  CHmiMedia::getUdiskPath(path);
  return path;
}

/// The file for a name, or "refused: " and the reason.
std::string resolved(const std::string& name) {
  std::string file;
  std::string reason;
  return deskhost::resolvePath(name, file, reason) ? file : "refused: " + reason;
}

}  // namespace

TEST_F(HostTest, FindsFilesBelowRootAndDisk) {
  fs::create_directory_symlink("data", tree.path("root/mnt/link"));
  const std::string root = tree.path("root");
  const std::string usb = tree.path("usb");
  const struct {
    std::string name, file;
  } rows[] = {
      {"/mnt/data/a.json", root + "/mnt/data/a.json"},
      {"//mnt/./data//a.json", root + "/mnt/data/a.json"},
      {"/mnt/not/there/..yet", root + "/mnt/not/there/..yet"},
      {"/mnt/link/a.json", root + "/mnt/data/a.json"},
      {"/mnt/data/切割.json", root + "/mnt/data/切割.json"},
      {usbPath() + "json/a.json", usb + "/json/a.json"},
      {usbPath() + "/a", usb + "/a"},
      {usb + "x/a", root + usb + "x/a"},
      {"/" + std::string(255, 'a'), root + "/" + std::string(255, 'a')},
  };
  for (const auto& row : rows) EXPECT_EQ(resolved(row.name), row.file) << row.name;
}

TEST_F(HostTest, RefusesNamesThatLeadElsewhere) {
  tree.write("secret/a.json", "canary");
  fs::create_directory_symlink(tree.path("secret"), tree.path("root/mnt/out"));
  fs::create_directory_symlink("../../../secret", tree.path("root/mnt/data/up"));
  fs::create_symlink(tree.path("secret/new.json"), tree.path("root/mnt/data/broken.json"));
  fs::create_symlink("loop", tree.path("root/mnt/loop"));
  fs::create_symlink(tree.path("root-beside/a.json"), tree.path("root/mnt/beside"));
  tree.write("root-beside/a.json", "canary");
  fs::create_directory_symlink(tree.path("root/mnt"), tree.path("usb/json/root"));
  const std::string outside = "refused: a symbolic link leads outside of ";
  const std::string root = tree.path("root");
  const std::string climbs = "refused: the name holds '..'";
  const std::string directory = "refused: the name is that of a directory";
  const std::string tooLong = "refused: the name is too long";
  const struct {
    std::string name, answer;
  } rows[] = {
      {"", "refused: no file is named"},
      {"mnt/data/a.json", "refused: the name is relative"},
      {"/..", climbs},
      {"/../secret/a.json", climbs},
      {"/../root/mnt/data/a.json", climbs},
      {"/mnt/data/../../../secret/a.json", climbs},
      {"/mnt/data/../data/a.json", climbs},
      {usbPath() + "../secret/a.json", climbs},
      {usbPath() + "json/../../secret/a.json", climbs},
      {"/", directory},
      {"/mnt/data/", directory},
      {"/mnt/data/.", directory},
      {usbPath(), directory},
      {std::string("/mnt/data/a\0.json", 17), "refused: the name holds a zero byte"},
      {"/mnt/\xFF.json", "refused: the name is not UTF-8"},
      {"/" + std::string(256, 'a'), tooLong},
      {std::string(5000, '/') + "a", tooLong},
      {"/mnt/out/a.json", outside + root},
      {"/mnt/data/up/a.json", outside + root},
      {"/mnt/data/broken.json", "refused: a symbolic link leads nowhere"},
      {"/mnt/beside", outside + root},
      {"/mnt/loop/a", "refused: Too many levels of symbolic links"},
      {usbPath() + "json/root/data/a.json", outside + tree.path("usb").string()},
  };
  for (const auto& row : rows) EXPECT_EQ(resolved(row.name), row.answer) << row.name;
  EXPECT_EQ(tree.read("secret/a.json"), "canary");
}

TEST_F(HostTest, PresentsSingleFilesFromAnywhere) {
  tree.write("desk/a.json", "{}");
  tree.write("root/mnt/data/a.json", "hidden");
  const std::string file = tree.path("desk/a.json");
  deskhost::settings().presented = {{"/mnt/data/a.json", file}, {"/mnt/../b.json", file}};
  std::string read;
  deskhost::settings().onRead = [&](const std::string& name) { read += name + "\n"; };
  EXPECT_EQ(resolved("/mnt/data/a.json"), file);
  EXPECT_EQ(resolved("/mnt/data/b.json"), tree.path("root/mnt/data/b.json").string());
  EXPECT_EQ(resolved("/mnt/../b.json"), "refused: the name holds '..'");
  EXPECT_EQ(resolved("/mnt/data/"), "refused: the name is that of a directory");
  Json::Value root;
  EXPECT_EQ(cbl::loadJsonFile("/mnt/data/a.json", root, false), 0) << takeLog();
  EXPECT_EQ(read, file + "\n");
}

TEST_F(HostTest, NamesTheUsbDiskWithOneSlashAtItsEnd) {
  const std::string usb = tree.path("usb");
  for (const std::string& given : {usb, usb + "/", usb + "///", usb + "/json/.."}) {
    deskhost::settings().usb = given;
    EXPECT_EQ(usbPath(), usb + "/") << given;
  }
  deskhost::settings().usb = "disk";
  EXPECT_EQ(usbPath(), fs::current_path().string() + "/disk/");
}

TEST_F(HostTest, HasNothingBelowADiskOrARootThatIsNotThere) {
  for (const char* none : {"", "/", "///", "/.."}) {
    deskhost::settings().usb = none;
    tree.write("root" + usbPath() + "json/a.json", "{}");
    EXPECT_EQ(resolved(usbPath() + "json/a.json"), "refused: there is no USB disk") << none;
  }
  const std::string gone = tree.path("gone");
  deskhost::settings().usb = gone;
  EXPECT_EQ(resolved(usbPath() + "a"), "refused: " + gone + "/: No such file or directory");
  deskhost::settings().root = gone;
  EXPECT_EQ(resolved("/mnt/a"), "refused: " + gone + ": No such file or directory");
  deskhost::settings().root.clear();
  EXPECT_EQ(resolved("/mnt/a"), "refused: there is no root directory");
}
