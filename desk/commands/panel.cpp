// cusdesk panel: the table part with a script, on a page of the browser or as a picture.
#include <climits>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/commands/commands.h"
#include "desk/commands/page_options.h"
#include "desk/panel/panel.h"

namespace desk::commands {

namespace {

panel::PictureOrder pictureOrderOf(const Arguments& arguments) {
  panel::PictureOrder order;
  order.svg = arguments.value("svg");
  order.png = arguments.value("png");
  if (order.svg == kStandardStream && order.png == kStandardStream) {
    throw Error(kExitUsage, "panel: standard output takes one picture, of --svg or of --png");
  }
  if (arguments.has("page")) {
    order.page = static_cast<int>(numberOf("panel", arguments, "page", 1, 1, USHRT_MAX));
  }
  order.step = numberOf("panel", arguments, "clock", order.step, 0, UINT_MAX);
  if (!arguments.has("click")) return order;
  tagPOINT point{};
  if (!readPair(arguments.value("click"), ',', kLongestSide, point.x, point.y)) {
    refuseOption("panel", "click", "X,Y in pixels of the picture");
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
    return panel::drawPanel(panelSetupOf("panel", arguments, arguments.value("job")), order);
  }
  refuseAny(arguments, {"page", "click", "clock"}, "is for a picture: name it with --svg or --png");
  return showPage("panel", arguments, arguments.values("job"), "panel");
}

std::vector<Option> options() {
  std::vector<Option> options = panelOptions();
  options.insert(options.begin() + 1, jobOption());
  for (const Option& option : pageOptions()) options.push_back(option);
  for (const Option& option : {
           Option{"svg", "FILE", "write the picture and end; '-' is standard output"},
           Option{"png", "FILE", "the same as PNG"},
           Option{"page", "N", "for a picture: go to this page first"},
           Option{"click", "X,Y", "for a picture: then click there"},
           Option{"clock", "MS", "for a picture: milliseconds between two steps (default: 100)"},
       }) {
    options.push_back(option);
  }
  return options;
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
      options(),
      run,
  };
}

}  // namespace desk::commands
