// A script that drives the table part, and what it is told.
#pragma once

#include <string>

#include "desk/panel/panel_table.h"
#include "desk/script/script_engine.h"

namespace desk::panel {

enum class Turn { Up, Down };

/// One run of a script. It sees the table part through the Lua table `panel`. What it does wrong is
/// written to the console.
class PanelScript {
 public:
  /// All must outlive the script. Once `stop` is set, running code ends with an error.
  PanelScript(const script::Plugin& plugin, TablePart& part, Console& console,
              const std::atomic<bool>& stop, const PanelFacts& facts);

  /// Loads a job of this PC. @return why it does not load, as a sentence; empty when it does
  std::string loadJob(const std::string& file);

  /// Runs the script itself, which sets up table and handlers. @return whether it came to its end
  bool start();

  /// Tells the script that a row was clicked. @return false when its handler failed
  bool clicked();

  /// A page key: turns the page, or isLeaving that to the script's handler. @return false when that
  /// failed
  bool turn(Turn direction);

  /// Tells the script that a job file has changed. @return false when it has no handler for that.
  /// @param succeeded set to false when its handler failed
  bool jobChanged(bool& succeeded);

  /// How many rows the script says there are.
  unsigned short total() const { return context_.total; }

  /// Asks the part again for a redraw that is due and was refused so far.
  void retryRefresh();

 private:
  bool pushHandler(const char* name);
  bool call(int arguments);

  const std::string file_;
  ScriptContext context_;
  script::ScriptEngine engine_;
};

}  // namespace desk::panel
