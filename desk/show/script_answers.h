// Asks the plug-in through its script commands.
#pragma once

#include <string>

#include "desk/base/errors.h"
#include "desk/script/script_engine.h"
#include "desk/show/table.h"

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

/// Loads a job with getjson_Flash. Throws Raised, or Error with the script's message when that
/// fails.
void loadJob(script::ScriptEngine& engine, const std::string& name);

/// The rows that a script gets for the job loaded last. No command lists the bars: theirs are put
/// together from cuts and labels, so a bar without pieces is not among them, as for a script.
/// Throws Raised.
Table ask(script::ScriptEngine& engine, const Question& question);

}  // namespace desk::show
