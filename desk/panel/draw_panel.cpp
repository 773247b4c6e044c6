// The panel as a picture in a file.
#include <cstdlib>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/host/settings.h"
#include "desk/panel/other_programs.h"
#include "desk/panel/panel.h"

namespace desk::panel {

namespace {

/// The panel's clock: stands still but for the steps.
class StepClock {
 public:
  explicit StepClock(unsigned long long step) : step_(step) { deskhost::setTickCount(0); }
  ~StepClock() { deskhost::setTickCount({}); }
  StepClock(const StepClock&) = delete;
  StepClock& operator=(const StepClock&) = delete;
  void next() { deskhost::setTickCount(now_ += step_); }

 private:
  const unsigned long long step_;
  unsigned long long now_ = 0;
};

void requirePage(const Page& reached, int wanted) {
  if (reached.current == wanted) return;
  throw Error(kExitIoError, "there is no page " + std::to_string(wanted) + ": " +
                                std::to_string(reached.current) + " of " +
                                std::to_string(reached.count) + " is the last one reached");
}

/// Takes the steps. @return whether the script met no error
bool take(Panel& panel, const PictureOrder& order) {
  StepClock clock(order.step);
  panel.runScript();
  panel.cycle();
  bool fine = !panel.view().failed;
  const auto step = [&](auto&& action) {
    clock.next();
    action();
    panel.cycle();
    fine = fine && !panel.view().failed;
  };
  if (order.page) {
    const int steps = *order.page - panel.view().page.current;
    const Turn direction = steps < 0 ? Turn::Up : Turn::Down;
    for (int i = 0; fine && i < std::abs(steps); ++i) step([&] { panel.turn(direction); });
    if (fine) requirePage(panel.view().page, *order.page);
  }
  if (fine && order.click) step([&] { panel.click(*order.click); });
  return fine;
}

}  // namespace

int drawPanel(const PanelSetup& setup, const PictureOrder& order) {
  View view;
  bool fine = false;
  {
    Console console([&](OutputSource source, const std::string& line) {
      if (source != OutputSource::Plugin || setup.verbose) echo(source, line);
    });
    const std::atomic<bool> stop{false};
    Panel panel(setup.plugin, setup.facts, console, stop);
    if (!panel.prepare()) return kExitIoError;
    fine = take(panel, order);
    view = panel.view();
  }
  if (!fine) return kExitFindings;
  if (!order.svg.empty()) writeFile(order.svg, view.svg);
  if (!order.png.empty()) writeFile(order.png, pngOf(view.svg));
  return kExitOk;
}

}  // namespace desk::panel
