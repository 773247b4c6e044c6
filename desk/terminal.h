// What the program writes to: a terminal or not, how wide, in colour or not.
#pragma once

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
/// moments.
class Progress {
 public:
  Progress() = default;
  ~Progress();  ///< takes the line away, so that something else can be written
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// What is going on from now on.
  void show(const std::string& text);

 private:
  void write();

  Terminal terminal_ = terminalOf(stderr);
  std::mutex mutex_;
  std::condition_variable ended_;
  std::string text_;
  bool isOver_ = false;
  std::thread writer_;  ///< started by the first text
};

}  // namespace desk
