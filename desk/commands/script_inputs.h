// What the commands about scripts take: a script, a job for it, and what goes wrong on the panel.
#pragma once

#include "desk/base/command_line.h"

namespace desk::commands {

/// --job FILE.
Option jobOption();

/// Throws Error when `file` cannot be read, and when it is a job by its name: what takes jobs is
/// named then.
void requireScript(const std::string& command, const std::string& file);

}  // namespace desk::commands
