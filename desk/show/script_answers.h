// Asks the plug-in through its script commands.
#pragma once

#include "desk/base/table.h"
#include "desk/script/script_engine.h"
#include "desk/show/answers.h"

namespace desk::show {

/// The rows that a script gets for the job loaded last; see panelQuestion. Throws Raised.
TextTable ask(script::ScriptEngine& engine, const Question& question);

}  // namespace desk::show
