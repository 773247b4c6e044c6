#include "desk/panel/panel.h"

#include <utility>

#include "desk/base/text.h"
#include "desk/host/settings.h"

namespace desk::panel {

Panel::Panel(const std::string& plugin, const PanelFacts& facts, Console& console,
             const std::atomic<bool>& stop)
    : facts_(facts),
      console_(console),
      stop_(stop),
      plugin_(plugin),
      part_(plugin_, {0, 0, facts.width, facts.height}) {
  deskhost::settings().onRead = [this](const std::string& file) { watch_.note(file); };
}

Panel::~Panel() {
  script_.reset();
  deskhost::settings().onRead = nullptr;
}

void Panel::start() {
  prepare();
  runScript();
}

bool Panel::prepare() {
  script_.reset();
  part_.reset();
  watch_.clear();
  watch_.note(facts_.script);
  script_ = std::make_unique<PanelScript>(plugin_, part_, console_, stop_, facts_);
  return loadJob();
}

void Panel::runScript() {
  note(script_->start());
}

bool Panel::loadJob() {
  if (facts_.jobFile.empty()) return true;
  watch_.note(facts_.jobFile);
  view_.jobFault = script_->loadJob(facts_.jobFile);
  if (view_.jobFault.empty()) return true;
  console_.say(OutputSource::Error, view_.jobFault);
  return false;
}

void Panel::click(tagPOINT point) {
  cycle();  // from here on a wish to be drawn is the click's
  part_.click(point);
  note(!draw() || script_->clicked());
}

void Panel::turn(Turn direction) {
  note(script_->turn(direction));
}

void Panel::cycle() {
  if (script_ != nullptr) script_->retryRefresh();
  draw();
}

void Panel::followFiles() {
  const std::vector<std::string> changed = watch_.changed();
  if (changed.empty()) return;
  const bool script = contains(changed, facts_.script);
  if (!script && contains(changed, facts_.jobFile)) loadJob();
  bool succeeded = true;
  if (script || !script_->jobChanged(succeeded)) return start();
  note(succeeded);
}

bool Panel::draw() {
  if (!part_.wantsRedraw()) return false;
  view_.svg = part_.picture();
  ++view_.picture;
  return true;
}

/// Takes what the operator sees beside the picture, after something was done.
void Panel::note(bool succeeded) {
  console_.flush();
  view_.failed = !succeeded;
  view_.page = part_.page();
  view_.rows = script_->total();
  view_.selected = part_.index();
}

}  // namespace desk::panel
