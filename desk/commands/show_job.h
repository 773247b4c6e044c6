// A job that a command reads itself, and what cusdesk show answers from it, without the panel's
// script commands.
#pragma once

#include <string>

#include "desk/base/command_line.h"
#include "desk/check/check_session.h"

namespace desk::commands {

/// The job of a file, read as a panel does that has just started, and what a check finds in it.
class CheckedJob {
 public:
  /// Throws Error when the file cannot be read or a panel would not load it.
  explicit CheckedJob(const std::string& file);

  const check::CheckSession& session() const { return session_; }

 private:
  check::CheckSession session_{check::CheckSession::Readers::Fresh};
};

/// Sums up the files that are the operands. Returns the exit code, as all of these.
int showSummary(const Arguments& arguments);

/// The pieces of the first operand.
int showPieces(const Arguments& arguments);

/// The cut list of the first operand, as HTML.
int printCutList(const Arguments& arguments);

}  // namespace desk::commands
