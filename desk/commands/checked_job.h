// A job that a command reads as a panel does that has just started.
#pragma once

#include <string>

#include "desk/check/check_session.h"

namespace desk::commands {

/// The job of a file, and what a check finds in it.
class CheckedJob {
 public:
  /// Throws Error when the file cannot be read or a panel would not load it.
  explicit CheckedJob(const std::string& file);

  model::JobFormat format() const { return format_; }
  const job::TracedJob& traced() const { return session_.job(format_); }
  const check::Report& report() const { return session_.report(); }

 private:
  check::CheckSession session_{check::CheckSession::Readers::Fresh};
  model::JobFormat format_;
};

}  // namespace desk::commands
