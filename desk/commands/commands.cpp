#include "desk/commands/commands.h"

#include <cstdlib>
#include <filesystem>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/host/settings.h"

namespace desk::commands {

// The commands, in the order in which the help lists them. The command NAME is what `NAMECommand()`
// in NAME.cpp returns.
#define CUSDESK_COMMANDS(command)                                                     \
  command(run) command(repl) command(check) command(show) command(view) command(diff) \
      command(draw) command(panel) command(doctor) command(export)

const std::vector<Option>& globalOptions() {
  static const std::vector<Option> kOptions = {
      {"plugin", "PATH", "the plug-in to load (default: the one beside cusdesk)"},
      {"root", "DIR", "stands for the controller's file system (default: the shipped examples)"},
      {"usb", "DIR", "stands for the USB disk (default: mnt/usb below the root)"},
      {"color", "WHEN", "colours and source lines: auto (default), always or never", '\0',
       namesOf(kColours)},
      {"quiet", nullptr, "the answer only: no lines of the plug-in, greeting or summary", 'q'},
      {"verbose", nullptr, "the plug-in's lines that are left out, on standard error", 'v'},
      {"help", nullptr, "show this help, or that of a command", 'h'},
      {"version", nullptr, "show the version"},
  };
  return kOptions;
}

#define DECLARE(name) Command name##Command();
CUSDESK_COMMANDS(DECLARE)
#undef DECLARE

const std::vector<Command>& allCommands() {
#define CALL(name) name##Command(),
  static const std::vector<Command> kCommands = {CUSDESK_COMMANDS(CALL)};
#undef CALL
  return kCommands;
}

namespace {

/// The directory that stands for the controller's file system. An empty or missing one would leave
/// the PC's own.
std::string rootDirectory(const Arguments& arguments, RootUse use) {
  if (!arguments.has("root")) return use == RootUse::Scripts ? exampleRoot() : shippedExamples();
  std::string root = arguments.value("root");
  if (root.empty()) throw Error(kExitUsage, "option '--root' needs a directory");
  std::error_code reason;
  if (!std::filesystem::is_directory(root, reason)) {
    throw Error(kExitIoError,
                "the root " + root + " is no directory" + (reason ? ": " + reason.message() : ""));
  }
  return root;
}

}  // namespace

std::string applyGlobalOptions(const Arguments& arguments, RootUse use) {
  deskhost::Settings& settings = deskhost::settings();
  settings.root = rootDirectory(arguments, use);
  settings.usb = arguments.value("usb", settings.root + "/mnt/usb");
  // The progress file goes below the root too, unless the environment says otherwise.
  constexpr char kProgressVariable[] = "CUS_CUTCURINDEX_FILE";
  const char* chosen = std::getenv(kProgressVariable);
  if (chosen == nullptr || *chosen == '\0') {
    setenv(kProgressVariable, (settings.root + CUS_CUTCURINDEX_DEFAULT).c_str(), 1);
  }
  return arguments.has("plugin") ? arguments.value("plugin") : shippedPlugin();
}

}  // namespace desk::commands
