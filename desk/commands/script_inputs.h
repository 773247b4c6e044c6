// What the commands about scripts take: a script, a job for it, and what goes wrong on the panel.
#pragma once

#include <string>

#include "desk/base/command_line.h"

namespace desk::commands {

/// --job FILE.
Option jobOption();

/// --fault FAULT, which may be given again.
Option faultOption();

/// Applies the program's options as applyGlobalOptions does, and lets go wrong what --fault names.
/// Returns the path of the plug-in. Throws Error for what is no fault.
std::string applyScriptOptions(const Arguments& arguments);

/// Throws Error when `file` cannot be read, and when it is a job by its name: what takes jobs is
/// named then.
void requireScript(const std::string& command, const std::string& file);

}  // namespace desk::commands
