// Disks that fail: reads that break off, writes that find no room, memory that runs out, and a
// process that dies at any point of a download. The job file of before is whole unless the new one
// is.
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "desk/host/documents.h"
#include "host/cbl.h"
#include "json/json_analysis.h"
#include "tests/desk/host/host_test.h"
#include "tests/support/counting_heap.h"
#include "tests/support/fault_server.h"
#include "tests/support/faulty_system.h"
#include "tests/support/made_jobs.h"

namespace fs = std::filesystem;
using faulty_system::Call;

namespace {

constexpr char kTarget[] = "/mnt/data/job.json";
constexpr char kFile[] = "root/mnt/data/job.json";

int get(const std::string& url) {
  return cbl::CHttpDownload().get(url, kTarget, "", 0, -1);
}

class FileFaults : public HostTest {
 protected:
  FileFaults() { tree.write(kFile, old); }

  /// Everything in the target's directory but the target.
  std::vector<std::string> leftovers() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(tree.path("root/mnt/data"))) {
      if (entry.path().filename() != "job.json") names.push_back(entry.path().filename());
    }
    return names;
  }

  const std::string old = made_jobs::json({1, 1, 1, "old"});
  const std::string fresh = made_jobs::json({8, 8, 8, "fresh"});
  FaultServer server{fresh};
};

}  // namespace

TEST_F(FileFaults, AJobWhoseFileBreaksOffIsNotRead) {
  JsonAnalysis reader;
  ASSERT_EQ(reader.jsonAnalysis(kTarget), 0);
  tree.write(kFile, fresh);
  int faults = 0;
  for (;; ++faults) {
    faulty_system::arm({Call::Read, faults, EIO, false, 1000});
    const int code = reader.jsonAnalysis(kTarget);
    if (!faulty_system::disarm()) break;
    ASSERT_EQ(code, -2) << faults;
    ASSERT_EQ(reader.data.Bar.size(), 1U) << "the job of before stays";
    const std::string file = tree.path(kFile);
    EXPECT_EQ(takeLog(), std::string(kTarget) + ": " + file + ": Input/output error\n");
    faulty_system::arm({Call::Read, faults, EINTR, false, 1000});
    std::string text, reason;
    ASSERT_TRUE(deskhost::readDocumentFile(file, text, reason)) << reason;
    ASSERT_EQ(text, fresh);
    faulty_system::disarm();
  }
  EXPECT_EQ(reader.data.Bar.size(), 8U);
  std::fprintf(stderr, "reads: %d failed\n", faults);
  EXPECT_GT(faults, 100);
}

TEST_F(FileFaults, ADownloadThatCannotBeWrittenLeavesTheOldFile) {
  const struct {
    Call call;
    int error;
    int least = 1;
  } rows[] = {{Call::Open, EMFILE},  {Call::Write, ENOSPC},  {Call::Write, EIO},
              {Call::Fsync, EIO, 2},  // the file, and then its directory
              {Call::Close, EDQUOT}, {Call::Rename, EACCES}, {Call::Read, EIO}};
  int faults = 0;
  for (const auto& row : rows) {
    int after = 0;
    for (;; ++after, ++faults) {
      tree.write(kFile, old);
      faulty_system::arm({row.call, after, row.error, false, 4000});
      const int code = get(server.url("ok"));
      if (!faulty_system::disarm()) break;
      EXPECT_EQ(tree.read(kFile), code == 0 ? fresh : old) << static_cast<int>(row.call) << after;
      EXPECT_EQ(takeLog().empty(), code == 0);
      EXPECT_EQ(leftovers(), std::vector<std::string>()) << after;
    }
    EXPECT_GE(after, row.least) << static_cast<int>(row.call);
    EXPECT_EQ(tree.read(kFile), fresh);
  }
  std::fprintf(stderr, "downloads: %d calls of the system failed\n", faults);
  EXPECT_GT(faults, 20);
}

TEST_F(FileFaults, ADownloadThatRunsOutOfMemoryLeavesTheOldFile) {
  const std::string small = "{\"Version\": \"1.0\"}", target = kTarget, none;
  const FaultServer source(small);
  const std::string url = source.url("ok");
  desk::setLogSink([](const std::string&) {});
  get(url);  // the first one sets up the library
  int faults = 0;
  for (const bool all : {false, true}) {
    for (unsigned long long after = 0;; ++after, ++faults) {
      tree.write(kFile, old);
      counting_heap::failAfter(after, all);
      const int code = cbl::CHttpDownload().get(url, target, none, 0, -1);
      const bool failed = counting_heap::stopFailing();
      ASSERT_TRUE(tree.read(kFile) == (code == 0 ? small : old)) << code << " " << after;
      ASSERT_EQ(leftovers(), std::vector<std::string>()) << after;
      if (!failed) break;
    }
    EXPECT_EQ(tree.read(kFile), small);
  }
  std::fprintf(stderr, "downloads: %d allocations failed\n", faults);
  EXPECT_GT(faults, 20);
}

TEST_F(FileFaults, AProcessThatDiesLeavesTheOldFileOrTheNewOne) {
  int deaths = 0;
  bool replaced = false;
  for (;; ++deaths) {
    tree.write(kFile, old);
    const pid_t child = ::fork();
    if (child == 0) {
      faulty_system::arm({Call::Any, deaths, 0, true, 4000});
      get(server.url("ok"));
      ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    const std::string now = tree.read(kFile);
    ASSERT_TRUE(now == old || now == fresh) << deaths;
    ASSERT_FALSE(replaced && now == old) << "once in place, it stays: " << deaths;
    replaced = now == fresh;
    if (WIFEXITED(status)) break;
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
  }
  for (const std::string& name : leftovers()) {
    EXPECT_EQ(name.rfind(".cusdesk-", 0), 0U) << name;
    EXPECT_EQ(fs::path(name).extension(), ".part") << name;
  }
  EXPECT_TRUE(replaced);
  EXPECT_FALSE(leftovers().empty()) << "no death came in mid-write";
  EXPECT_EQ(get(server.url("ok")), 0) << "leftovers are in nobody's way";
  std::fprintf(stderr, "downloads: %d deaths\n", deaths);
  EXPECT_GT(deaths, 10);
}
