// cusdesk run: runs a script as the panel would.
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"
#include "desk/script/script_engine.h"

namespace desk::commands {

namespace {

/// A script for others to read may be followed by "-q" too; the script sees it all the same.
bool isQuiet(const Arguments& arguments) {
  return arguments.has("quiet") || contains(arguments.operands, "-q");
}

int run(const Arguments& arguments) {
  std::vector<std::string> words = arguments.operands;
  const std::string script = words.front();
  words.erase(words.begin());
  requireScript("run", script);

  const script::Plugin plugin(applyScriptOptions(arguments));
  const bool raw = arguments.has("raw-errors");
  script::ScriptEngine engine(plugin,
                              raw ? script::ModuleErrors::Raw : script::ModuleErrors::Guarded,
                              !isQuiet(arguments)        ? script::PluginLines::Kept
                              : arguments.has("verbose") ? script::PluginLines::StandardError
                                                         : script::PluginLines::Dropped);
  if (arguments.has("job")) script::loadJob(engine, arguments.value("job"));
  return engine.run(script, words);
}

}  // namespace

Command runCommand() {
  return {
      "run",
      "SCRIPT [ARG...]",
      "run a script as the panel would",
      "  cusdesk run demo.lua                    with the jobs that ship with cusdesk\n"
      "  cusdesk run --job window.json demo.lua  with a job from anywhere, loaded first\n"
      "  cusdesk run -q demo.lua > rows.txt      without the plug-in's own lines\n"
      "  cusdesk run --fault no-usb demo.lua     on a day without a USB disk\n"
      "  cusdesk run --root . --usb mnt/usb demo.lua  with your own folders\n",
      {
          jobOption(),
          faultOption(),
          {"raw-errors", nullptr, "let C++ exceptions of the module reach Lua as on the panel"},
      },
      run,
      true,
  };
}

}  // namespace desk::commands
