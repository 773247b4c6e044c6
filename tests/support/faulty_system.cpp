#include "tests/support/faulty_system.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>

namespace {

using faulty_system::Call;

thread_local faulty_system::Fault fault;
thread_local bool armed = false;
thread_local bool happened = false;

/// Whether this call is to fail; errno is set then.
bool fails(Call call) {
  if (!armed || happened || (fault.call != Call::Any && fault.call != call)) return false;
  if (fault.after-- > 0) return false;
  happened = true;
  if (fault.kill) ::kill(::getpid(), SIGKILL);
  errno = fault.error;
  return true;
}

std::size_t bounded(std::size_t size) {
  return armed && fault.most > 0 ? std::min(size, static_cast<std::size_t>(fault.most)) : size;
}

}  // namespace

namespace faulty_system {

void arm(const Fault& wanted) {
  fault = wanted;
  happened = false;
  armed = true;
}

bool disarm() {
  armed = false;
  return happened;
}

}  // namespace faulty_system

extern "C" {

int open(const char* path, int flags, ...) {
  std::va_list rest;
  va_start(rest, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
  va_end(rest);
  if (fails(Call::Open)) return -1;
  return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t read(int file, void* bytes, size_t size) {
  return fails(Call::Read) ? -1 : ::syscall(SYS_read, file, bytes, bounded(size));
}

ssize_t write(int file, const void* bytes, size_t size) {
  return fails(Call::Write) ? -1 : ::syscall(SYS_write, file, bytes, bounded(size));
}

int fsync(int file) {
  return fails(Call::Fsync) ? -1 : static_cast<int>(::syscall(SYS_fsync, file));
}

/// A close that reports an error has closed the file all the same.
int close(int file) {
  const bool bad = fails(Call::Close);
  const int error = errno;
  const int result = static_cast<int>(::syscall(SYS_close, file));
  if (!bad) return result;
  errno = error;
  return -1;
}

int rename(const char* from, const char* to) noexcept {
  if (fails(Call::Rename)) return -1;
  return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

}  // extern "C"
