#include "desk/base/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <mutex>
#include <utility>

#include "desk/base/errors.h"
#include "desk/base/text.h"

namespace desk {

namespace {

std::mutex sinkMutex;

LogSink& currentSink() {
  static LogSink sink;
  return sink;
}

void writeToStandardError(const std::string& line) {
  const std::string whole = "cusdesk: " + line + "\n";
  std::fwrite(whole.data(), 1, whole.size(), stderr);
}

}  // namespace

void log(std::string_view line) noexcept {
  try {
    const std::string text = escapeControls(line);
    const std::lock_guard<std::mutex> lock(sinkMutex);
    currentSink() ? currentSink()(text) : writeToStandardError(text);
  } catch (...) {
    // The caller is already reporting a failure; it must not turn into another one.
  }
}

LogSink setLogSink(LogSink sink) {
  const std::lock_guard<std::mutex> lock(sinkMutex);
  return std::exchange(currentSink(), std::move(sink));
}

StdoutRedirect::StdoutRedirect(To to) {
  if (to == To::StandardOutput) return;
  std::fflush(stdout);
  const int target =
      to == To::StandardError ? ::dup(STDERR_FILENO) : ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  saved_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  const bool done = target >= 0 && saved_ >= 0 && ::dup2(target, STDOUT_FILENO) >= 0;
  if (target >= 0) ::close(target);
  if (!done) throw Error(kExitIoError, "cannot set standard output aside");
}

StdoutRedirect::~StdoutRedirect() {
  if (saved_ < 0) return;
  std::cout.flush();
  std::fflush(stdout);
  ::dup2(saved_, STDOUT_FILENO);
  ::close(saved_);
}

}  // namespace desk
