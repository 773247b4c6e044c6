// The commands of cusdesk, one file each, the table that names them, what is made from it,
// and what several of them take or need.
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

/// The plug-in beside the program, or in the package's library folder. Throws Error when neither
/// is there.
std::string shippedPlugin();

/// The example tree that ships with the program, for reading. Throws Error when there is none.
std::string shippedExamples();

/// The example tree for scripts, which write to it. The tree itself where the program was built. Of
/// an installed program a copy in the user's data folder, made when there is none yet, with a line
/// about it on standard error; the installed one where no copy can be made, with the reason.
std::string exampleRoot();

/// A script for bash and zsh that completes commands, options and their arguments.
std::string bashCompletion();

/// The same for fish, which asks bash.
std::string fishCompletion();

/// The manual page cusdesk(1), for man's macros.
std::string manPage();

}  // namespace desk::commands
