#include "desk/commands/page_options.h"

#include <climits>
#include <cstdlib>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"
#include "desk/server/serve.h"

namespace desk::commands {

namespace {

/// A decimal number and nothing else.
bool readNumber(const std::string& text, unsigned long long most, unsigned long long& value) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return false;
  errno = 0;
  value = std::strtoull(text.c_str(), nullptr, 10);
  return errno == 0 && value <= most;
}

}  // namespace

void refuseOption(const std::string& command, const std::string& option,
                  const std::string& expected) {
  throw Error(kExitUsage, command + ": option '--" + option + "' expects " + expected);
}

bool readPair(const std::string& text, char separator, int most, int& first, int& second) {
  const std::size_t at = text.find(separator);
  unsigned long long values[2] = {};
  const auto limit = static_cast<unsigned long long>(most);
  if (at == std::string::npos || !readNumber(text.substr(0, at), limit, values[0]) ||
      !readNumber(text.substr(at + 1), limit, values[1])) {
    return false;
  }
  first = static_cast<int>(values[0]);
  second = static_cast<int>(values[1]);
  return true;
}

unsigned long long numberOf(const std::string& command, const Arguments& arguments,
                            const std::string& option, unsigned long long otherwise,
                            unsigned long long least, unsigned long long most) {
  unsigned long long value = otherwise;
  const bool fine = !arguments.has(option) || readNumber(arguments.value(option), most, value);
  if (!fine || value < least) {
    refuseOption(command, option,
                 "a number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return value;
}

std::vector<Option> panelOptions() {
  return {
      {"script", "FILE", "the script that drives the table (default: the examples' panel.lua)"},
      faultOption(),
      {"size", "WxH", "of the panel, in pixels (default: 800x480)"},
  };
}

std::vector<Option> pageOptions() {
  return {
      {"port", "N", "serve on this port (default: a free one)"},
      {"no-open", nullptr, "print the address only, open no browser"},
  };
}

panel::PanelSetup panelSetupOf(const std::string& command, const Arguments& arguments,
                               const std::string& job) {
  panel::PanelSetup setup;
  setup.facts.width = 800;
  setup.facts.height = 480;
  if (arguments.has("size") && (!readPair(arguments.value("size"), 'x', kLongestSide,
                                          setup.facts.width, setup.facts.height) ||
                                setup.facts.width == 0 || setup.facts.height == 0)) {
    refuseOption(command, "size", "WIDTHxHEIGHT in pixels, such as 1280x800");
  }
  setup.verbose = arguments.has("verbose");
  setup.plugin = applyScriptOptions(arguments);
  setup.facts.script = arguments.value("script");
  if (setup.facts.script.empty()) setup.facts.script = shippedExamples() + "/panel.lua";
  requireScript(command, setup.facts.script);
  setup.facts.jobFile = job;
  if (!job.empty()) setup.facts.job = job::presentJob(job).name;
  return setup;
}

int showPage(const std::string& command, const Arguments& arguments,
             const std::vector<std::string>& jobs, const std::string& view) {
  server::PageSetup setup;
  setup.port = static_cast<int>(numberOf(command, arguments, "port", 0, 0, USHRT_MAX));
  setup.panel = panelSetupOf(command, arguments, jobs.empty() ? "" : jobs.front());
  setup.jobs = jobs;
  setup.view = view;
  setup.opens = !arguments.has("no-open");
  return server::serve(setup);
}

}  // namespace desk::commands
