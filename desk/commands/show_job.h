// What cusdesk show answers from the job itself, without the panel's script commands.
#pragma once

#include "desk/base/command_line.h"

namespace desk::commands {

/// Sums up the files that are the operands. Returns the exit code, as all of these.
int showSummary(const Arguments& arguments);

/// The pieces of the first operand.
int showPieces(const Arguments& arguments);

/// The cut list of the first operand, as HTML.
int printCutList(const Arguments& arguments);

}  // namespace desk::commands
