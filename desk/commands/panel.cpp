// cusdesk panel: the table part with a script, on a page of the browser or as a picture.
#include <climits>
#include <cstdlib>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/commands/commands.h"
#include "desk/job/job_file.h"
#include "desk/panel/panel.h"
#include "desk/server/serve.h"

namespace desk::commands {

namespace {

constexpr int kLongestSide = 4096;

[[noreturn]] void refuse(const std::string& option, const std::string& expected) {
  throw Error(kExitUsage, "panel: option '--" + option + "' expects " + expected);
}

/// A decimal number and nothing else.
bool readNumber(const std::string& text, unsigned long long most, unsigned long long& value) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return false;
  errno = 0;
  value = std::strtoull(text.c_str(), nullptr, 10);
  return errno == 0 && value <= most;
}

/// Two numbers with `separator` between them.
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

unsigned long long number(const Arguments& arguments, const std::string& option,
                          unsigned long long otherwise, unsigned long long least,
                          unsigned long long most) {
  unsigned long long value = otherwise;
  const bool fine = !arguments.has(option) || readNumber(arguments.value(option), most, value);
  if (!fine || value < least) {
    refuse(option, "a number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return value;
}

panel::PanelSetup setupOf(const Arguments& arguments) {
  panel::PanelSetup setup;
  setup.facts.width = 800;
  setup.facts.height = 480;
  if (arguments.has("size") && (!readPair(arguments.value("size"), 'x', kLongestSide,
                                          setup.facts.width, setup.facts.height) ||
                                setup.facts.width == 0 || setup.facts.height == 0)) {
    refuse("size", "WIDTHxHEIGHT in pixels, such as 1280x800");
  }
  setup.verbose = arguments.has("verbose");
  setup.plugin = applyScriptOptions(arguments);
  setup.facts.script = arguments.value("script");
  if (setup.facts.script.empty()) setup.facts.script = shippedExamples() + "/panel.lua";
  requireScript("panel", setup.facts.script);
  setup.facts.jobFile = arguments.value("job");
  if (arguments.has("job")) setup.facts.job = job::presentJob(setup.facts.jobFile).name;
  return setup;
}

panel::PictureOrder pictureOrderOf(const Arguments& arguments) {
  panel::PictureOrder order;
  order.svg = arguments.value("svg");
  order.png = arguments.value("png");
  if (order.svg == kStandardStream && order.png == kStandardStream) {
    throw Error(kExitUsage, "panel: standard output takes one picture, of --svg or of --png");
  }
  if (arguments.has("page")) {
    order.page = static_cast<int>(number(arguments, "page", 1, 1, USHRT_MAX));
  }
  order.step = number(arguments, "clock", order.step, 0, UINT_MAX);
  if (!arguments.has("click")) return order;
  tagPOINT point{};
  if (!readPair(arguments.value("click"), ',', kLongestSide, point.x, point.y)) {
    refuse("click", "X,Y in pixels of the picture");
  }
  order.click = point;
  return order;
}

/// Throws when an option is given that means nothing here.
void refuseAny(const Arguments& arguments, std::initializer_list<const char*> options,
               const std::string& reason) {
  for (const char* option : options) {
    if (!arguments.has(option)) continue;
    throw Error(kExitUsage, std::string("panel: option '--") + option + "' " + reason);
  }
}

int run(const Arguments& arguments) {
  if (!arguments.operands.empty()) {
    throw Error(kExitUsage, "panel: what is '" + arguments.operands.front() +
                                "'? A script comes with --script, a job with --job");
  }
  if (arguments.has("svg") || arguments.has("png")) {
    refuseAny(arguments, {"port", "no-open"}, "is for the page, not for a picture");
    const panel::PictureOrder order = pictureOrderOf(arguments);
    return panel::drawPanel(setupOf(arguments), order);
  }
  refuseAny(arguments, {"page", "click", "clock"}, "is for a picture: name it with --svg or --png");
  const auto port = static_cast<int>(number(arguments, "port", 0, 0, USHRT_MAX));
  panel::PanelSetup setup = setupOf(arguments);
  setup.facts.isChecked = setup.facts.jobFile != kStandardStream;  // which can be read once only
  return server::servePanel(setup, port, !arguments.has("no-open"));
}

}  // namespace

Command panelCommand() {
  return {
      "panel",
      "",
      "show the table part, in a browser or as a picture",
      "  cusdesk panel                           the shipped job's cut list in the browser\n"
      "  cusdesk panel --job window.json         that of your own job; follows changes on disk\n"
      "  cusdesk panel --script panel.lua        your own script (see docs/panel.md)\n"
      "  cusdesk panel --svg cuts.svg --page 2 --click 400,200  a picture, without a browser\n",
      {
          {"script", "FILE", "the script that drives the table (default: the examples' panel.lua)"},
          jobOption(),
          faultOption(),
          {"size", "WxH", "of the panel, in pixels (default: 800x480)"},
          {"port", "N", "serve on this port (default: a free one)"},
          {"no-open", nullptr, "print the address only, open no browser"},
          {"svg", "FILE", "write the picture and end; '-' is standard output"},
          {"png", "FILE", "the same as PNG"},
          {"page", "N", "for a picture: go to this page first"},
          {"click", "X,Y", "for a picture: then click there"},
          {"clock", "MS", "for a picture: milliseconds between two steps (default: 100)"},
      },
      run,
  };
}

}  // namespace desk::commands
