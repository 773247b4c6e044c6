// cusdesk doctor: says whether a plug-in will load on a controller, and why not.
#include <cstdio>
#include <optional>

#include "desk/base/errors.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/doctor/examination.h"

namespace desk::commands {

namespace {

void print(const doctor::Remark& remark) {
  std::printf("  %-8s %-13s %s\n", remark.problem ? "PROBLEM" : "ok", remark.subject.c_str(),
              escapeControls(remark.text).c_str());
}

int run(const Arguments& arguments) {
  const std::vector<std::string>& operands = arguments.operands;
  const std::string against = arguments.value("against");
  const std::string panel = arguments.value("host");
  std::optional<doctor::Sysroot> target;
  std::optional<doctor::Sysroot> host;
  if (!against.empty()) target.emplace(against);
  if (!panel.empty()) host.emplace(panel, against);
  const doctor::ElfFile plugin = doctor::readElf(operands.front(), doctor::soughtTexts());

  std::printf("%s\n", escapeControls(plugin.path).c_str());
  int problems = 0;
  for (const doctor::Remark& remark :
       doctor::examine(plugin, target ? &*target : nullptr, host ? &*host : nullptr)) {
    print(remark);
    problems += remark.problem ? 1 : 0;
  }
  if (problems == 0) {
    std::puts(target ? "It will load on this target."
              : host ? "With this host it will load on every known controller."
                     : "It will load on every known controller.");
    return kExitOk;
  }
  std::printf("%d problem%s.\n", problems, problems == 1 ? "" : "s");
  return kExitFindings;
}

}  // namespace

Command doctorCommand() {
  return {
      "doctor",
      "PLUGIN",
      "say whether a plug-in will load on a controller, and why not",
      "  cusdesk doctor libCustom_LuaParseModule.so              against the oldest controllers\n"
      "  cusdesk doctor --against sysroot libCustom_LuaParseModule.so   against a target's "
      "libraries\n"
      "  cusdesk doctor --against sysroot --host sysroot/usr/bin/panel "
      "libCustom_LuaParseModule.so\n",
      {
          {"against", "PATHS", "the target's root, library folders or libraries, with : between"},
          {"host", "PATHS", "the panel runtime's program and its libraries, with : between"},
      },
      run,
  };
}

}  // namespace desk::commands
