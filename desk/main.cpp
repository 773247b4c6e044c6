// cusdesk: the desk runtime. It stands in for the panel on a PC.
#include <fcntl.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"

namespace {

using namespace desk;
using commands::allCommands;
using commands::globalOptions;

constexpr char kVersion[] = "cusdesk " CUSDESK_VERSION "\n";

std::string programHelp() {
  std::string text =
      "Examples:\n"
      "  cusdesk export --examples .             demo.lua, window.json and more, to try things on\n"
      "  cusdesk run demo.lua                    run a script as the panel would\n"
      "  cusdesk check window.json               what the panel would miss in a job\n"
      "  cusdesk show window.json                bars, yield, stock to fetch, leftovers\n"
      "\n"
      "Usage: cusdesk [OPTION...] COMMAND [OPTION...] [ARG...]\n"
      "\n"
      "Commands:\n";
  for (const Command& command : allCommands()) {
    std::string line = std::string("  ") + command.name;
    line.resize(22, ' ');
    text += line + command.help + "\n";
  }
  return text + "\nOptions:\n" + optionsHelp(globalOptions()) + "\nExit codes: " + kExitCodesHelp +
         "\n";
}

std::string commandHelp(const Command& command) {
  const std::string operands = *command.operands == '\0' ? "" : std::string(" ") + command.operands;
  const std::string own =
      command.options.empty() ? "" : "\nOptions:\n" + optionsHelp(command.options);
  return std::string("Examples:\n") + command.examples + "\nUsage: cusdesk " + command.name +
         " [OPTION...]" + operands + "\n  " + command.help + "\n" + own +
         "\nOptions of every command:\n" + optionsHelp(globalOptions());
}

const Command& find(const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : allCommands()) {
    if (name == command.name) return command;
    names.push_back(command.name);
  }
  const std::string near = nearest(name, names);
  throw Error(kExitUsage,
              "unknown command '" + name + "'; " +
                  (near.empty() ? "see 'cusdesk --help'" : "did you mean '" + near + "'?"));
}

int show(const std::string& text) {
  const Terminal terminal = terminalOf(stdout);
  std::fputs(terminal.isTerminal ? foldedToColumns(text, terminal.columns).c_str() : text.c_str(),
             stdout);
  return kExitOk;
}

/// @param words what stands behind the command: its own options and the program's, and operands
int run(const Command& command, const std::vector<std::string>& words, Arguments arguments) {
  std::vector<Option> options = command.options;
  options.insert(options.end(), globalOptions().begin(), globalOptions().end());
  const Arguments behind =
      command.leavesTheRest ? parse(words, options) : parseAnywhere(words, options);
  arguments.addOptions(behind);
  arguments.operands = behind.operands;
  if (arguments.has("help")) return show(commandHelp(command));
  if (arguments.has("version")) return show(kVersion);
  checkOperands(command, arguments.operands);
  checkOptions(command, arguments);
  setColours(choice(arguments.value("color", "auto"), "--color", kColours).when);
  return command.run(arguments);
}

int dispatch(const std::vector<std::string>& words) {
  Arguments arguments = parse(words, globalOptions());
  std::vector<std::string> rest = std::move(arguments.operands);
  if (arguments.has("version")) return show(kVersion);
  if (rest.empty()) {
    if (arguments.has("help")) return show(programHelp());
    throw Error(kExitUsage, "which command? See 'cusdesk --help'");
  }
  if (rest.front() == "help") {
    rest.erase(rest.begin());
    if (rest.empty()) return show(programHelp());
    return show(commandHelp(find(rest.front())));
  }
  const Command& command = find(rest.front());
  rest.erase(rest.begin());
  return run(command, rest, std::move(arguments));
}

/// One line, whatever the names in it hold.
int report(const std::exception& error, ExitCode code) {
  std::fprintf(stderr, "cusdesk: %s\n", escapeControls(error.what()).c_str());
  return code;
}

/// Output that was lost, to a full disk for one, must not look like success. Runs at the very end,
/// also when a script calls os.exit.
void checkOutput() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
  std::fputs("cusdesk: standard output could not be written\n", stderr);
  std::_Exit(kExitIoError);
}

/// A caller may have closed a standard stream. Without this the next file that is opened would take
/// its number, and what is printed would land there.
void fillClosedStreams() {
  for (int stream = 0; stream <= 2; ++stream) {
    if (fcntl(stream, F_GETFD) < 0) ::open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) {
  fillClosedStreams();
  std::atexit(checkOutput);
  try {
    return dispatch({argv + 1, argv + argc});
  } catch (const Error& error) {
    return report(error, error.code());
  } catch (const std::exception& error) {
    return report(error, kExitIoError);
  }
}
