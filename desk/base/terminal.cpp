#include "desk/base/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string_view>

#include "desk/base/display_width.h"

namespace desk {

namespace {

constexpr unsigned long kPatience = 300;             ///< milliseconds
constexpr unsigned long kMostPatience = 86'400'000;  ///< a day
constexpr std::chrono::milliseconds kBetween{100};
constexpr std::size_t kLeastColumns = 20;
constexpr std::size_t kMostColumns = 10'000;

bool wantsColour() {
  const char* refused = std::getenv("NO_COLOR");
  const char* kind = std::getenv("TERM");
  return (refused == nullptr || *refused == '\0') && kind != nullptr &&
         std::string_view(kind) != "dumb";
}

/// 0 where neither the environment nor the device says.
std::size_t columnsOf(int device) {
  const char* const wanted = std::getenv("COLUMNS");
  const unsigned long columns = wanted == nullptr ? 0 : std::strtoul(wanted, nullptr, 10);
  if (columns > 0 && columns <= kMostColumns) return columns;
  winsize size{};
  return ::ioctl(device, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace

Terminal terminalOf(std::FILE* stream) {
  Terminal terminal;
  const int number = ::fileno(stream);
  terminal.isTerminal = ::isatty(number) == 1;
  if (!terminal.isTerminal) return terminal;
  terminal.hasColour = wantsColour();
  const std::size_t columns = columnsOf(number);
  if (columns > 0) terminal.columns = std::max(columns, kLeastColumns);
  return terminal;
}

Progress::Progress() {
  const char* const wanted = std::getenv("CUSDESK_PROGRESS_AFTER");
  const unsigned long patience = wanted == nullptr ? kPatience : std::strtoul(wanted, nullptr, 10);
  patience_ = std::chrono::milliseconds(std::min(patience, kMostPatience));
}

Progress::~Progress() {
  if (!writer_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    isOver_ = true;
  }
  ended_.notify_one();
  writer_.join();
}

void Progress::show(const std::string& text) {
  if (!terminal_.isTerminal) return;
  const std::lock_guard<std::mutex> lock(mutex_);
  text_ = text;
  if (patience_.count() == 0) draw();
  if (!writer_.joinable()) writer_ = std::thread([this] { write(); });
}

void Progress::draw() {
  const auto seconds =
      std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start_).count();
  const std::string time = seconds == 0 ? "" : std::to_string(seconds) + " s: ";
  std::fprintf(stderr, "\r%s\x1b[K", fitted(time + text_, terminal_.columns - 1).c_str());
  std::fflush(stderr);
  isDrawn_ = true;
}

void Progress::write() {
  const auto isOver = [this] { return isOver_; };
  std::unique_lock<std::mutex> lock(mutex_);
  ended_.wait_for(lock, patience_, isOver);
  while (!isOver_) {
    draw();
    ended_.wait_for(lock, kBetween, isOver);
  }
  if (isDrawn_) std::fputs("\r\x1b[K", stderr);
}

}  // namespace desk
