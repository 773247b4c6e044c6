// What the program writes to: a terminal or not, how wide, in colour or not.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>

namespace desk {

struct Terminal {
  bool isTerminal = false;
  bool hasColour = false;    ///< a terminal that knows colours, and NO_COLOR is not set
  std::size_t columns = 80;  ///< at least 20
};

/// What `stream` leads to.
Terminal terminalOf(std::FILE* stream);

/// One line on standard error that tells how far long work has come. Says nothing when standard
/// error is no terminal, and nothing in the first moments.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(const std::string& text);

  /// Takes the line away, so that something else can be written.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  Terminal terminal_;
  Clock::time_point next_;  ///< when the line may be written again
  bool isShown_ = false;
};

}  // namespace desk
