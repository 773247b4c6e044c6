#include "desk/commands.h"

#include <cstdlib>

#include "desk/host/settings.h"
#include "desk/locations.h"

namespace desk {

const std::vector<Option>& globalOptions() {
  static const std::vector<Option> kOptions = {
      {"plugin", "PATH", "the plug-in to load (default: the one beside cusdesk)"},
      {"root", "DIR", "stands for the controller's file system (default: the shipped examples)"},
      {"usb", "DIR", "stands for the USB disk (default: mnt/usb below the root)"},
      {"help", nullptr, "show this help, or that of a command", 'h'},
      {"version", nullptr, "show the version"},
  };
  return kOptions;
}

const std::vector<Command>& commands() {
  static const std::vector<Command> kCommands = {runCommand()};
  return kCommands;
}

std::string applyGlobalOptions(const Arguments& global) {
  deskhost::Settings& settings = deskhost::settings();
  settings.root = global.has("root") ? global.value("root") : shippedExamples();
  settings.usb = global.value("usb", settings.root + "/mnt/usb");
  // The progress file goes below the root too, unless the environment says otherwise.
  constexpr char kProgressVariable[] = "CUS_CUTCURINDEX_FILE";
  const char* chosen = std::getenv(kProgressVariable);
  if (chosen == nullptr || *chosen == '\0') {
    setenv(kProgressVariable, (settings.root + CUS_CUTCURINDEX_DEFAULT).c_str(), 1);
  }
  return global.has("plugin") ? global.value("plugin") : shippedPlugin();
}

}  // namespace desk
