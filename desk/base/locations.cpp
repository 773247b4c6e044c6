#include "desk/base/locations.h"

#include <filesystem>

#include "desk/base/errors.h"

namespace desk {

namespace {

namespace fs = std::filesystem;

/// The first of the two that exists: as built, or as installed. Both count from the program.
std::string firstThatExists(const char* what, const char* built, const char* installed) {
  std::error_code ignored;
  const fs::path program = fs::read_symlink("/proc/self/exe", ignored).parent_path();
  for (const char* place : {built, installed}) {
    const fs::path candidate = (program / place).lexically_normal();
    if (fs::exists(candidate, ignored)) return candidate.string();
  }
  throw Error(kExitCannot, std::string("cannot find ") + what + " (" + built +
                               ") beside the program; name it on the command line");
}

}  // namespace

std::string shippedPlugin() {
  return firstThatExists("the plug-in", "libCustom_LuaParseModule.so",
                         "../lib/cusdesk/libCustom_LuaParseModule.so");
}

std::string shippedExamples() {
  return firstThatExists("the example tree", "share/cusdesk/examples", "../share/cusdesk/examples");
}

}  // namespace desk
