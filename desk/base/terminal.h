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

/// When to write colours: on terminals that know them unless NO_COLOR is set, always, or never.
enum class Colours { Auto, Always, Never };

struct ColoursRow {
  const char* name;
  Colours when;
};
inline constexpr ColoursRow kColours[] = {
    {"auto", Colours::Auto}, {"always", Colours::Always}, {"never", Colours::Never}};

/// Decides for the whole program. Set it before the first answer is written.
void setColours(Colours when);

struct Terminal {
  bool isTerminal = false;
  bool hasColour = false;    ///< as decided; with Colours::Always also where there is no terminal
  std::size_t columns = 80;  ///< at least 20; the environment's COLUMNS goes before the device

  /// Whether somebody looks at what is written, or is about to, through a pager.
  bool isForEyes() const { return isTerminal || hasColour; }
};

/// What `stream` leads to. Where colours are always wanted and it is no terminal, as in a pipe to a
/// pager, its columns are those of the terminal behind standard error.
Terminal terminalOf(std::FILE* stream);

/// Columns that UTF-8 text fills: two for each wide character, none for a combining mark, one for a
/// byte that is no UTF-8. Control characters count as none: spell them out first.
std::size_t displayWidth(std::string_view text);

/// `text` when it fits into `columns`, else its beginning and an ellipsis.
std::string truncatedToColumns(const std::string& text, std::size_t columns);

/// `text` with lines of at most `columns`, folded at blanks. What stands in a second column, behind
/// two blanks, goes on below itself, or on lines of its own where that column is too far right.
/// A longer word stays whole.
std::string foldedToColumns(const std::string& text, std::size_t columns);

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
