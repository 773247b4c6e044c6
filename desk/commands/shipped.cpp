// What ships with the program, and where it lies on this PC.
#include <sys/auxv.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "desk/base/errors.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"

namespace desk::commands {

namespace {

namespace fs = std::filesystem;

/// A folder without /proc, as some chroots are, still knows by which path the program was started.
fs::path programFolder() {
  std::error_code error;
  fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel gives the address as a number
    const auto* const path = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    program = fs::canonical(path == nullptr ? "" : path, error);
  }
  return program.parent_path();
}

/// Where something lies that ships with the program; both count from the program.
struct Place {
  const char* built;
  const char* installed;
};
constexpr Place kPlugin{"libCustom_LuaParseModule.so",
                        "../lib/cusdesk/libCustom_LuaParseModule.so"};
constexpr Place kExamples{"share/cusdesk/examples", "../share/cusdesk/examples"};

/// Empty when there is none.
fs::path existing(const char* place) {
  std::error_code ignored;
  const fs::path candidate = (programFolder() / place).lexically_normal();
  return fs::exists(candidate, ignored) ? candidate : fs::path();
}

std::string find(const char* what, const Place& place) {
  for (const char* candidate : {place.built, place.installed}) {
    const fs::path found = existing(candidate);
    if (!found.empty()) return found.string();
  }
  throw Error(kExitIoError, std::string("cannot find ") + what + " (" + place.built +
                                ") beside the program; name it on the command line");
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// Empty when the user has none.
fs::path userDataFolder() {
  const std::string data = environment("XDG_DATA_HOME");
  if (fs::path(data).is_absolute()) return data;
  const std::string home = environment("HOME");
  return home.empty() ? fs::path() : fs::path(home) / ".local/share";
}

/// Copies a tree so that it is there whole or not at all, and answers with the system's reason.
std::error_code copyWhole(const fs::path& from, const fs::path& target) {
  const fs::path part = target.string() + "." + std::to_string(::getpid()) + ".part";
  std::error_code error;
  fs::create_directories(target.parent_path(), error);
  if (!error) fs::copy(from, part, fs::copy_options::recursive, error);
  if (!error) fs::rename(part, target, error);
  std::error_code ignored;
  fs::remove_all(part, ignored);
  return error;
}

void say(const std::string& text) {
  std::fprintf(stderr, "cusdesk: %s\n", escapeControls(text).c_str());
}

}  // namespace

std::string shippedPlugin() {
  return find("the plug-in", kPlugin);
}

std::string shippedExamples() {
  return find("the example tree", kExamples);
}

std::string exampleRoot() {
  std::string shipped = shippedExamples();
  if (!existing(kExamples.built).empty()) return shipped;
  const fs::path copy = userDataFolder() / "cusdesk/examples";
  std::error_code ignored;
  if (copy.is_absolute() && fs::is_directory(copy, ignored)) return copy.string();
  const std::string reason =
      copy.is_absolute() ? copyWhole(shipped, copy).message() : "the environment has no HOME";
  if (copy.is_absolute() && fs::is_directory(copy, ignored)) {
    say("scripts work on your own copy of the examples, " + copy.string());
    return copy.string();
  }
  say("scripts work on the installed examples: there is no copy of your own (" + reason +
      "), and --root names no other folder");
  return shipped;
}

}  // namespace desk::commands
