// Asks the plug-in through its script commands.
#pragma once

#include <string>

#include "desk/script_engine.h"
#include "desk/show/table.h"

namespace desk::show {

/// Loads a job with getjson_Flash. Throws Error with the script's message when that fails.
void loadJob(ScriptEngine& engine, const std::string& name);

/// The rows that a script gets for the job loaded last. No command lists the bars: theirs are put
/// together from cuts and labels, so a bar without pieces is not among them, as for a script.
/// Throws Error with what the command raises.
Table ask(ScriptEngine& engine, const Question& question);

}  // namespace desk::show
