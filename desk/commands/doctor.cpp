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
  std::printf("  %-8s %-13s %s\n", remark.weight == doctor::Weight::Fine ? "ok" : "PROBLEM",
              remark.subject.c_str(), escapeControls(remark.text).c_str());
}

/// The paths that an option names; nothing when it is not given.
std::optional<std::string> pathsOf(const Arguments& arguments, const char* option) {
  if (!arguments.has(option)) return std::nullopt;
  std::string paths = arguments.value(option);
  if (paths.find_first_not_of(':') == std::string::npos) {
    throw Error(kExitUsage, std::string("option '--") + option + "' needs a path");
  }
  return paths;
}

int run(const Arguments& arguments) {
  const std::vector<std::string>& operands = arguments.operands;
  const auto against = pathsOf(arguments, "against");
  const auto panel = pathsOf(arguments, "host");
  const auto compared = pathsOf(arguments, "compare");
  std::optional<doctor::Sysroot> target;
  std::optional<doctor::Sysroot> host;
  std::optional<doctor::ElfFile> earlier;
  if (against) target.emplace(*against);
  if (panel) host.emplace(*panel, against.value_or(""));
  if (host && host->files().empty()) {
    throw Error(kExitUsage, "option '--host' needs the panel runtime's program, not only folders");
  }
  if (compared) earlier = doctor::readElf(*compared);
  const doctor::ElfFile plugin = doctor::readElf(operands.front(), doctor::soughtTexts());
  const doctor::Diagnosis diagnosis = doctor::examine(
      plugin,
      {target ? &*target : nullptr, host ? &*host : nullptr, earlier ? &*earlier : nullptr});

  std::puts(escapeControls(plugin.path + " " + diagnosis.sentence + ".").c_str());
  for (const doctor::Remark& remark : diagnosis.remarks) print(remark);
  return diagnosis.problems == 0 ? kExitOk : kExitFindings;
}

}  // namespace

Command doctorCommand() {
  return {
      "doctor",
      "PLUGIN",
      "say whether a plug-in will load on a controller, and why not",
      "  cusdesk doctor libCustom_LuaParseModule.so  against the oldest controllers\n"
      "  cusdesk doctor --against sysroot libCustom_LuaParseModule.so  against a target's "
      "libraries\n"
      "  cusdesk doctor --against sysroot --host sysroot/usr/bin/panel "
      "libCustom_LuaParseModule.so\n"
      "  cusdesk doctor --compare old.so libCustom_LuaParseModule.so    may it take old.so's "
      "place?\n",
      {
          {"against", "PATHS", "the target's root, library folders or libraries, with : between"},
          {"host", "PATHS", "the panel runtime's program and its libraries, with : between"},
          {"compare", "FILE", "the plug-in whose place it shall take"},
      },
      run,
  };
}

}  // namespace desk::commands
