// What the program writes to: a terminal or not, how wide, in colour or not.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

namespace desk {

struct Terminal {
  bool isTerminal = false;
  bool hasColour = false;    ///< a terminal that knows colours, and NO_COLOR is not set
  std::size_t columns = 80;  ///< at least 20; the environment's COLUMNS goes before the device
};

/// What `stream` leads to.
Terminal terminalOf(std::FILE* stream);

/// One line on standard error that tells what is going on and for how long, while long work has no
/// time to tell itself. Says nothing when standard error is no terminal, and nothing in the first
/// 300 ms, or as many as CUSDESK_PROGRESS_AFTER in the environment says; at 0 every text is shown.
class Progress {
 public:
  Progress();
  ~Progress();  ///< takes the line away, so that something else can be written
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// What is going on from now on.
  void show(const std::string& text);

 private:
  using Clock = std::chrono::steady_clock;

  void draw();   ///< with the lock held
  void write();  ///< the thread's work

  Terminal terminal_ = terminalOf(stderr);
  Clock::time_point start_ = Clock::now();
  std::chrono::milliseconds patience_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::string text_;
  bool isDrawn_ = false;
  bool isOver_ = false;
  std::thread writer_;  ///< started by the first text
};

}  // namespace desk
