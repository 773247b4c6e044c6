// The terminal: how wide it is, how much room text takes on it, what is going on.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace desk {

struct Terminal {
  bool isTerminal = false;
  bool hasColour = false;    ///< a terminal that knows colours, and NO_COLOR is not set
  std::size_t columns = 80;  ///< at least 20; the environment's COLUMNS goes before the device
};

/// What `stream` leads to.
Terminal terminalOf(std::FILE* stream);

/// Columns that UTF-8 text fills: two for each wide character, none for a combining mark, one for a
/// byte that is no UTF-8. Control characters count as none: spell them out first.
std::size_t displayWidth(std::string_view text);

/// `text` when it fits into `columns`, else its beginning and an ellipsis.
std::string truncatedToColumns(const std::string& text, std::size_t columns);

/// `text` with blanks behind it, or in front of it, that fill it up to `columns`.
std::string padded(const std::string& text, std::size_t columns, bool toRight = false);

/// A progress line on standard error, shown after 0.3 s, or as many milliseconds as
/// CUSDESK_PROGRESS_AFTER in the environment says, and removed when done; at 0 every text is shown.
/// Not shown when standard error is no terminal.
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
