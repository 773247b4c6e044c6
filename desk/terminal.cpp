#include "desk/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "desk/display_width.h"

namespace desk {

namespace {

constexpr std::chrono::milliseconds kPatience{300};
constexpr std::chrono::milliseconds kBetween{100};
constexpr std::size_t kLeastColumns = 20;

bool wantsColour() {
  const char* refused = std::getenv("NO_COLOR");
  const char* kind = std::getenv("TERM");
  return (refused == nullptr || *refused == '\0') && kind != nullptr &&
         std::string_view(kind) != "dumb";
}

}  // namespace

Terminal terminalOf(std::FILE* stream) {
  Terminal terminal;
  const int number = ::fileno(stream);
  terminal.isTerminal = ::isatty(number) == 1;
  if (!terminal.isTerminal) return terminal;
  terminal.hasColour = wantsColour();
  winsize size{};
  if (::ioctl(number, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    terminal.columns = std::max<std::size_t>(size.ws_col, kLeastColumns);
  }
  return terminal;
}

Progress::Progress() : terminal_(terminalOf(stderr)), next_(Clock::now() + kPatience) {}

Progress::~Progress() {
  clear();
}

void Progress::show(const std::string& text) {
  if (!terminal_.isTerminal || Clock::now() < next_) return;
  next_ = Clock::now() + kBetween;
  isShown_ = true;
  std::fprintf(stderr, "\r%s\x1b[K", fitted(text, terminal_.columns - 1).c_str());
  std::fflush(stderr);
}

void Progress::clear() {
  if (!isShown_) return;
  isShown_ = false;
  std::fputs("\r\x1b[K", stderr);
}

}  // namespace desk
