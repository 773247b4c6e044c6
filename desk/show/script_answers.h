// Asks the plug-in through its script commands.
#pragma once

#include <string>
#include <vector>

#include "desk/base/errors.h"
#include "desk/base/table.h"
#include "desk/script/script_engine.h"
#include "desk/show/question.h"

namespace desk::show {

/// What a script command raises.
class Raised : public Error {
 public:
  /// @param command as scripts call it: "get_cut"
  Raised(const std::string& command, const std::string& message)
      : Error(kExitFindings, "show: " + message), command_(command) {}

  const std::string& command() const { return command_; }

 private:
  std::string command_;
};

/// The keys of the rows that answer a question.
std::vector<std::string> keysOf(const Question& question);

/// The rows that a script gets for the job loaded last; see panelQuestion. Throws Raised.
TextTable ask(script::ScriptEngine& engine, const Question& question);

/// The bars. No command lists them: theirs are put together from all cuts and labels, so a bar
/// without pieces is not among them, as for a script.
TextTable barsOf(const TextTable& cuts, const TextTable& labels);

}  // namespace desk::show
