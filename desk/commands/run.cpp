// cusdesk run: runs a script as the panel would.
#include "desk/base/errors.h"
#include "desk/commands/commands.h"
#include "desk/script/script_engine.h"

namespace desk::commands {

namespace {

int run(const Invocation& invocation) {
  std::vector<std::string> arguments = invocation.command.operands;
  if (arguments.empty()) throw Error(kExitUsage, "run: which script?");
  const std::string script = arguments.front();
  arguments.erase(arguments.begin());

  const script::Plugin plugin(applyGlobalOptions(invocation.global));
  const bool raw = invocation.command.has("raw-errors");
  script::ScriptEngine engine(plugin,
                              raw ? script::ModuleErrors::Raw : script::ModuleErrors::Guarded);
  return engine.run(script, arguments);
}

}  // namespace

Command runCommand() {
  return {
      "run",
      "SCRIPT [ARG...]",
      "run a script as the panel would",
      "  cusdesk run demo.lua                      with the jobs that ship with cusdesk\n"
      "  cusdesk --root panel --usb stick run a.lua  with your own folders\n",
      {
          {"raw-errors", nullptr, "let C++ exceptions of the module reach Lua as on the panel"},
          {"help", nullptr, "show this help", 'h'},
      },
      run,
  };
}

}  // namespace desk::commands
