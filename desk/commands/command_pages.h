// Completion and manual page, made from the table of commands.
#pragma once

#include <string>

namespace desk::commands {

/// A script for bash that completes commands, options and their arguments.
std::string bashCompletion();

/// The manual page cusdesk(1), for man's macros.
std::string manPage();

}  // namespace desk::commands
