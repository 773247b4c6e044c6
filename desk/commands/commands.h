// The commands of cusdesk, one file each, the table that names them, and what is made from it.
#pragma once

#include <string>
#include <vector>

#include "desk/base/command_line.h"

namespace desk::commands {

/// Options of the program, which stand before or behind the command.
const std::vector<Option>& globalOptions();

/// All commands, in the order in which the help lists them.
const std::vector<Command>& allCommands();

/// Whether a command lets scripts write below the root.
enum class RootUse { Reading, Scripts };

/// Applies --root and --usb to the host's services, and returns the path of the plug-in.
std::string applyGlobalOptions(const Arguments& arguments, RootUse use);

/// A script for bash and zsh that completes commands, options and their arguments.
std::string bashCompletion();

/// The same for fish, which asks bash.
std::string fishCompletion();

/// The manual page cusdesk(1), for man's macros.
std::string manPage();

}  // namespace desk::commands
