// What open pages are told of: written by the threads of panel and jobs, read by the server's.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "desk/panel/panel.h"
#include "desk/server/jobs.h"

namespace desk::server {

/// What the panel shows, the latest lines of output, and which jobs there are. Safe to use from
/// several threads.
class PageState {
 public:
  explicit PageState(const panel::PanelFacts& facts) : facts_(facts) {}

  /// Where a reader stands. Each reader starts with one of its own.
  struct Cursor {
    std::uint64_t version = 0;
    std::uint64_t line = 0;
    std::uint64_t jobs = 0;
  };

  void publish(const panel::View& view);
  void addLine(panel::OutputSource source, const std::string& line);
  void setJobs(const std::vector<JobFacts>& jobs);

  /// Tells those who wait that something else than the view may have changed.
  void notify();

  /// Waits until there was a change after the first `seen` ones. @return how many there were
  std::uint64_t wait(std::uint64_t seen, std::chrono::milliseconds timeout);

  /// What is new to the reader, as one JSON object without line ends, and moves the cursor on; ""
  /// when nothing is.
  std::string changesSince(Cursor& cursor);

  std::string picture();

  /// Ends all waiting, for good.
  void close();
  bool isClosed();

 private:
  void noteChange();

  const panel::PanelFacts facts_;
  std::mutex mutex_;
  std::condition_variable changed_;
  panel::View view_;
  std::deque<std::pair<panel::OutputSource, std::string>> lines_;
  std::uint64_t firstLine_ = 0;  ///< number of the oldest line kept
  std::vector<JobFacts> jobs_;
  std::uint64_t jobsVersion_ = 1;
  std::uint64_t version_ = 1;  ///< of everything
  std::uint64_t changes_ = 1;  ///< of the version and of anything else
  bool closed_ = false;
};

}  // namespace desk::server
