// The commands of cusdesk, one file each, and the table that names them.
#pragma once

#include <vector>

#include "desk/base/command_line.h"

namespace desk::commands {

/// Options that stand before the command.
const std::vector<Option>& globalOptions();

/// All commands, in the order in which the help lists them.
const std::vector<Command>& allCommands();

/// Applies --root and --usb to the host's services, and returns the path of the plug-in.
std::string applyGlobalOptions(const Arguments& global);

}  // namespace desk::commands
