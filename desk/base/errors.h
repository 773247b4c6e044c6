// Exit codes of cusdesk and the errors that lead to them.
#pragma once

#include <stdexcept>
#include <string>

namespace desk {

enum ExitCode {
  kExitOk = 0,
  kExitFindings = 1,  ///< a script failed, or a command found something
  kExitUsage = 2,     ///< the command line makes no sense
  kExitIoError = 3,   ///< something cannot be read, obtained or loaded
};

/// The same in words, for help and manual.
inline constexpr char kExitCodesHelp[] =
    "0 fine, 1 findings, differences or a failed script, 2 usage, 3 cannot read, obtain or load.";

/// An error that ends the program with one line on standard error.
class Error : public std::runtime_error {
 public:
  Error(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace desk
