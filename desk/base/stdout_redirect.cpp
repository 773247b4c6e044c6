#include "desk/base/stdout_redirect.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "desk/base/errors.h"

namespace desk {

StdoutRedirect::StdoutRedirect(To to) {
  std::fflush(stdout);
  const int target =
      to == To::StandardError ? ::dup(STDERR_FILENO) : ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  saved_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
  const bool done = target >= 0 && saved_ >= 0 && ::dup2(target, STDOUT_FILENO) >= 0;
  if (target >= 0) ::close(target);
  if (!done) throw Error(kExitCannot, "cannot set standard output aside");
}

StdoutRedirect::~StdoutRedirect() {
  std::cout.flush();
  std::fflush(stdout);
  ::dup2(saved_, STDOUT_FILENO);
  ::close(saved_);
}

}  // namespace desk
