// What stands in for the parts of cusdesk that a browser has no use for, and what they say then.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/random.h>
#include <unistd.h>

#include "desk/base/errors.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/host/http_transfer.h"
#include "desk/panel/other_programs.h"

namespace desk::commands {

namespace {

Command leftOut(const char* name) {
  return {name, "", "(not in the cusdesk for browsers)", "", {}, [](const Arguments&) -> int {
            throw Error(kExitUsage, "this command is not in the cusdesk for browsers");
          }};
}

}  // namespace

Command doctorCommand() {
  return leftOut("doctor");
}

Command replCommand() {
  return leftOut("repl");
}

/// A part of the program; nothing is read by this name.
std::string shippedPlugin() {
  return "libCustom_LuaParseModule.so";
}

/// Whoever starts the program puts them there.
std::string shippedExamples() {
  return "/share/cusdesk/examples";
}

std::string exampleRoot() {
  return shippedExamples();
}

}  // namespace desk::commands

namespace desk::panel {

std::string pngOf(const std::string&, int) {
  throw Error(kExitIoError, "the cusdesk for browsers makes no PNG: take SVG");
}

}  // namespace desk::panel

namespace deskhost {

bool isHttpAddress(const std::string& url) {
  return desk::startsWith(url, "http://") || desk::startsWith(url, "https://");
}

DownloadResult transfer(const std::string&, desk::TemporaryFile*) {
  return {DownloadCode::InBrowser, "this cusdesk runs in a browser and connects to nothing"};
}

}  // namespace deskhost

extern "C" {

/// For the console, which needs one at a time. Appends always: emscripten gives a duplicate of a
/// descriptor an offset of its own.
int memfd_create(const char*, unsigned) {
  return open("/dev/shm/memory", O_RDWR | O_CREAT | O_TRUNC | O_APPEND, 0600);
}

ssize_t getrandom(void* bytes, std::size_t size, unsigned) {
  return getentropy(bytes, size) == 0 ? static_cast<ssize_t>(size) : -1;
}

}  // extern "C"
