// What the commands about scripts take: a script, a job for it, and what goes wrong on the panel.
#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/host/settings.h"
#include "model/job_format.h"

namespace desk::commands {

namespace {

[[noreturn]] void refuseJob(const std::string& command, const std::string& file) {
  throw Error(kExitUsage, command + ": " + file + " is a job, not a script: give it with --job " +
                              file + ", or see 'cusdesk show " + file + "'");
}

void answerDownloads(const std::string& text) {
  constexpr std::size_t kMostDigits = 9;
  const bool isNumber = text.size() > 1 && text.size() <= kMostDigits + 1 && text.front() == '-' &&
                        text.find_first_not_of("0123456789", 1) == std::string::npos;
  const int code = isNumber ? std::stoi(text) : 0;
  if (code >= 0) {
    throw Error(kExitUsage,
                "--fault download=CODE: a failure is a number below 0, not '" + text + "'");
  }
  deskhost::settings().downloadFaults.code = code;
}

struct FaultRow {
  const char* name;
  const char* typed;  ///< with what stands behind the name
  void (*apply)(const std::string& value);
};
constexpr FaultRow kFaults[] = {
    {"no-usb", "no-usb", [](const std::string&) { deskhost::settings().usb.clear(); }},
    {"download=", "download=CODE", answerDownloads},
    {"like-panel", "like-panel",
     [](const std::string&) { deskhost::settings().downloadFaults.keepsWhateverCame = true; }},
};

std::vector<std::string> typedFaults() {
  std::vector<std::string> faults;
  for (const FaultRow& row : kFaults) faults.emplace_back(row.typed);
  return faults;
}

}  // namespace

Option jobOption() {
  return {"job", "FILE", "load this job before the script; '-' is standard input"};
}

Option faultOption() {
  return {"fault",
          "FAULT",
          "a bad day: no-usb, download=CODE or like-panel (docs/manual.md); may be given again",
          '\0',
          namesOf(kFaults),
          {},
          true};
}

std::string applyScriptOptions(const Arguments& arguments) {
  std::string plugin = applyGlobalOptions(arguments, RootUse::Scripts);
  for (const std::string& fault : arguments.values("fault")) {
    const std::size_t end = fault.find('=');
    const std::string name = fault.substr(0, end == std::string::npos ? end : end + 1);
    choice(name, "--fault", kFaults, typedFaults()).apply(fault.substr(name.size()));
  }
  return plugin;
}

void requireScript(const std::string& command, const std::string& file) {
  const std::string name = lowerCase(file);
  for (const model::JobFormatRow& row : model::kJobFormats) {
    if (!model::hasEnding(name, row.format)) continue;
    refuseJob(command, file);
  }
  requireReadable(file);
}

}  // namespace desk::commands
