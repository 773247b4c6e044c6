#include "desk/base/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8.h>
#include <clocale>
#include <cwchar>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "desk/base/text.h"

namespace desk {

namespace {

constexpr unsigned long kPatience = 300;             ///< milliseconds
constexpr unsigned long kMostPatience = 86'400'000;  ///< a day
constexpr std::chrono::milliseconds kBetween{100};
constexpr std::size_t kLeastColumns = 20;
constexpr std::size_t kMostColumns = 10'000;

Colours colours = Colours::Auto;

bool wantsColour() {
  if (colours != Colours::Auto) return colours == Colours::Always;
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

/// The C library's table of widths, whatever locale the program runs in.
int widthOf(char32_t character) {
  static const locale_t kUtf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kUtf8 == nullptr) return 1;
  const locale_t before = uselocale(kUtf8);
  const int width = wcwidth(static_cast<wchar_t>(character));
  uselocale(before);
  return width;
}

/// Goes past one character and returns how many columns it fills.
std::size_t take(std::string_view text, std::size_t& at) {
  const std::size_t size = utf8CharacterSize(text, at);
  if (size < 2) {
    const auto byte = static_cast<unsigned char>(text[at++]);
    return byte < 0x20 || byte == 0x7F ? 0 : 1;
  }
  const char* place = text.data() + at;
  at += size;
  return static_cast<std::size_t>(std::max(widthOf(utf8::unchecked::next(place)), 0));
}

}  // namespace

void setColours(Colours when) {
  colours = when;
}

Terminal terminalOf(std::FILE* stream) {
  Terminal terminal;
  const int number = ::fileno(stream);
  terminal.isTerminal = ::isatty(number) == 1;
  if (!terminal.isTerminal && colours != Colours::Always) return terminal;
  terminal.hasColour = wantsColour();
  const std::size_t columns = columnsOf(terminal.isTerminal ? number : STDERR_FILENO);
  if (columns > 0) terminal.columns = std::max(columns, kLeastColumns);
  return terminal;
}

std::size_t displayWidth(std::string_view text) {
  std::size_t columns = 0;
  for (std::size_t at = 0; at < text.size();) columns += take(text, at);
  return columns;
}

std::string truncatedToColumns(const std::string& text, std::size_t columns) {
  if (displayWidth(text) <= columns) return text;
  if (columns == 0) return "";
  std::size_t end = 0;
  std::size_t used = 0;
  for (std::size_t at = 0; at < text.size(); end = at) {
    used += take(text, at);
    if (used > columns - 1) break;
  }
  return text.substr(0, end) + "…";
}

namespace {

/// Appends the words of `words` to `text`, whose last line fills `at` columns; further lines begin
/// with `indent` blanks.
void appendFolded(std::string& text, const std::string& words, std::size_t at, std::size_t indent,
                  std::size_t columns) {
  std::istringstream rest(words);
  bool isFirst = true;
  for (std::string word; std::getline(rest, word, ' '); isFirst = false) {
    const std::size_t width = displayWidth(word) + (isFirst ? 0 : 1);
    if (!isFirst && at + width > columns) {
      text += "\n" + std::string(indent, ' ') + word;
      at = indent + width - 1;
    } else {
      text += (isFirst ? "" : " ") + word;
      at += width;
    }
  }
}

std::string foldedLine(const std::string& line, std::size_t columns) {
  constexpr std::size_t kIndent = 6;
  const std::size_t start = line.find_first_not_of(' ');
  if (displayWidth(line) <= columns || start == std::string::npos) return line;
  const std::size_t gap = line.find("  ", start);
  const std::size_t second = gap == std::string::npos ? gap : line.find_first_not_of(' ', gap);
  std::string text(start, ' ');
  if (second == std::string::npos || second > columns / 2) {
    appendFolded(text, line.substr(start, gap - start), start, start + kIndent, columns);
    if (second == std::string::npos) return text;
    text += "\n" + std::string(kIndent, ' ');
    appendFolded(text, line.substr(second), kIndent, kIndent, columns);
    return text;
  }
  text = line.substr(0, second);
  appendFolded(text, line.substr(second), second, second, columns);
  return text;
}

}  // namespace

std::string foldedToColumns(const std::string& text, std::size_t columns) {
  std::string folded;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) folded += foldedLine(line, columns) + "\n";
  return folded;
}

std::string padded(const std::string& text, std::size_t columns, bool toRight) {
  const std::string blanks(columns - std::min(displayWidth(text), columns), ' ');
  return toRight ? blanks + text : text + blanks;
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
  std::fprintf(stderr, "\r%s\x1b[K",
               truncatedToColumns(time + text_, terminal_.columns - 1).c_str());
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
