// cusdesk repl: a prompt for Lua with the plug-in's module loaded.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/editor/module_notes.h"
#include "desk/job/job_file.h"
#include "desk/repl/interrupt.h"
#include "desk/repl/line_source.h"
#include "desk/repl/prompt_code.h"
#include "desk/repl/repl.h"
#include "desk/script/script_engine.h"

namespace desk::commands {

namespace {

constexpr char kShortName[] = "job";

constexpr char kBanner[] =
    "cusdesk " CUSDESK_VERSION ", " LUA_RELEASE
    "\n"
    "job = require \"cus_ParseModule\"    Tab completes, Ctrl-C interrupts, Ctrl-D ends\n";
constexpr char kHint[] = "Try: job.getjson_Flash(\"window.json\")   job.get_cut(\"1\")   help()\n";
constexpr char kHelpEnd[] =
    "help(job.get_cut) tells more of one. Tab names the fields of a table behind its dot. exit() "
    "or "
    "Ctrl-D ends.";

/// Standard input where it is no terminal.
class PlainLines : public repl::LineSource {
 public:
  repl::Reading read(const std::string& /*prompt*/, std::string& line) override {
    return std::getline(std::cin, line) ? repl::Reading::Line : repl::Reading::Eof;
  }
};

/// What the prompt has beyond a script's globals: the module's short name, help, exit and quit.
void addGlobals(lua_State* L) {
  lua_getglobal(L, editor::kModuleName);
  lua_setglobal(L, kShortName);
  const std::size_t columns = std::min<std::size_t>(terminalOf(stdout).columns - 1, 79);
  std::vector<std::pair<std::string, std::string>> texts;
  for (const script_functions::Words& words : editor::functionNotes()) {
    texts.emplace_back(words.name, editor::helpOf(words, columns));
  }
  const std::string end = wrapped(kHelpEnd, columns);
  repl::addHelp(L, kShortName, texts, editor::moduleHelp(kShortName, columns) + end);
}

int prompt(script::ScriptEngine& engine, const repl::PromptCode& code, const Arguments& arguments) {
  if (isatty(STDIN_FILENO) == 0) {
    PlainLines lines;
    return repl::Repl(engine, code, lines, repl::Repl::Mode::Silent).run() ? kExitOk
                                                                           : kExitFindings;
  }
  if (!arguments.has("quiet")) {
    std::fputs(kBanner, stdout);
    std::fputs(arguments.has("job") ? "" : kHint, stdout);
  }
  repl::TerminalLines lines(code);
  repl::Repl(engine, code, lines, repl::Repl::Mode::Prompt).run();
  return kExitOk;
}

int run(const Arguments& arguments) {
  if (!arguments.operands.empty()) requireScript("repl", arguments.operands.front());
  const script::Plugin plugin(applyScriptOptions(arguments));
  const bool raw = arguments.has("raw-errors");
  script::ScriptEngine engine(
      plugin, raw ? script::ModuleErrors::Raw : script::ModuleErrors::Guarded,
      arguments.has("verbose") ? script::PluginLines::StandardError : script::PluginLines::Dropped);
  const repl::PromptCode promptCode(engine.state());  // before a script can change what it keeps
  repl::letInterruptReach(engine.state());
  addGlobals(engine.state());
  if (arguments.has("job")) script::loadJob(engine, arguments.value("job"));
  std::vector<std::string> words = arguments.operands;
  if (words.empty()) {
    engine.setArguments("cusdesk", {});
  } else {
    const std::string script = words.front();
    words.erase(words.begin());
    const int code = engine.run(script, words);
    if (code != kExitOk) return code;
  }
  return prompt(engine, promptCode, arguments);
}

}  // namespace

Command replCommand() {
  return {
      "repl",
      "[SCRIPT [ARG...]]",
      "try Lua line by line, with the module loaded as 'job'",
      "  cusdesk repl                            with the jobs that ship with cusdesk\n"
      "  cusdesk repl --job window.json          with a job of yours loaded\n"
      "  cusdesk repl demo.lua                   run a script first, then look at its globals\n"
      "  echo 'job.get_cut(\"1\")' | cusdesk repl --job window.json  ask once\n",
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
