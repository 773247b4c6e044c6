#include "desk/panel/console.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <utility>

#include "desk/base/errors.h"
#include "desk/base/output.h"
#include "desk/base/text.h"

namespace desk::panel {

namespace {

constexpr std::size_t kLongestLine = 2000;

/// Whether a byte continues a UTF-8 character.
bool continues(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string_view shortened(std::string_view text) {
  if (text.size() <= kLongestLine) return text;
  std::size_t end = kLongestLine;
  while (end > 0 && continues(text[end])) --end;
  return text.substr(0, end);
}

}  // namespace

void echo(OutputSource source, const std::string& line) {
  const bool own = source == OutputSource::Desk || source == OutputSource::Error;
  std::fprintf(stderr, "%s%s\n", own ? "cusdesk: " : "", line.c_str());
}

Console::Console(ConsoleSink sink)
    : sink_(std::move(sink)), caught_(memfd_create("output", MFD_CLOEXEC)), real_(-1) {
  std::fflush(stdout);
  if (caught_ >= 0) real_ = dup(STDOUT_FILENO);
  if (real_ < 0 || dup2(caught_, STDOUT_FILENO) < 0) {
    throw Error(kExitIoError, "cannot catch the scripts' output");
  }
  setLogSink([this](const std::string& text) { say(OutputSource::Desk, text); });
}

Console::~Console() {
  setLogSink({});
  std::fflush(stdout);
  dup2(real_, STDOUT_FILENO);
  close(real_);
  close(caught_);
}

void Console::say(OutputSource source, std::string_view text) {
  flush();
  take(source, text);
  flush();
}

void Console::flush() {
  drain();
  if (!line_.empty()) endLine();
}

Console::OutputScope::OutputScope(Console& console, OutputSource source)
    : console_(console), before_(console.current_) {
  console_.drain();
  console_.current_ = source;
}

Console::OutputScope::~OutputScope() {
  console_.drain();
  console_.current_ = before_;
}

void Console::answer(std::string_view text) const {
  while (!text.empty()) {
    const ssize_t written = ::write(real_, text.data(), text.size());
    if (written <= 0) throw Error(kExitIoError, "cannot write to standard output");
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void Console::drain() {
  std::fflush(stdout);
  std::array<char, 4096> chunk;
  off_t at = 0;
  for (;;) {
    const ssize_t got = pread(caught_, chunk.data(), chunk.size(), at);
    if (got <= 0) break;
    at += got;
    take(current_, {chunk.data(), static_cast<std::size_t>(got)});
  }
  if (at == 0) return;
  // Nothing is written in between: whoever writes runs on this thread.
  if (ftruncate(caught_, 0) == 0) lseek(caught_, 0, SEEK_SET);
}

void Console::take(OutputSource source, std::string_view text) {
  if (source != lineSource_ && !line_.empty()) endLine();
  lineSource_ = source;
  for (std::size_t end; (end = text.find('\n')) != std::string_view::npos;) {
    line_ += shortened(text.substr(0, end));
    endLine();
    text.remove_prefix(end + 1);
  }
  if (line_.size() < kLongestLine) line_ += shortened(text);
}

void Console::endLine() {
  const std::string whole = std::exchange(line_, {});
  sink_(lineSource_, escapeControls(shortened(whole), "\t"));
}

}  // namespace desk::panel
