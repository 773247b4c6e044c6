// The panel on a PC: plug-in, table part and script, and what the operator sees of them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desk/base/file_watch.h"
#include "desk/panel/panel_script.h"

namespace desk::panel {

/// What the operator sees.
struct View {
  std::uint64_t picture = 0;  ///< counts the pictures fetched
  std::string svg;            ///< the last of them
  Page page{1, 1};
  unsigned short rows = 0;      ///< in the whole list
  std::optional<int> selected;  ///< number of a row in the whole list, from 1
  bool failed = false;          ///< the script or a handler of it met an error
  std::string jobFault;         ///< why the job that was given is not loaded; empty: it is
};

/// Loads the plug-in, creates the part and runs the script. All calls come on one thread. The
/// picture is fetched only when the part asks for that, and only in `cycle`.
class Panel {
 public:
  /// Console and `stop` must outlive the panel; `stop` ends a script that runs. Throws Error when
  /// the plug-in cannot be loaded or is none.
  Panel(const std::string& plugin, const PanelFacts& facts, Console& console,
        const std::atomic<bool>& stop);
  ~Panel();

  /// Runs the script from its beginning, on an empty table.
  void start();

  /// The first half of that: an empty table, and the job loaded. @return whether it is
  bool prepare();

  /// The second half.
  void runScript();

  /// The operator touches the panel at `point`.
  void click(tagPOINT point);

  /// The operator presses a page key.
  void turn(Turn direction);

  /// What the panel does all the time: asks the part whether it wants to be drawn, and draws it.
  void cycle();

  /// Tells the script about changed job files; a script that does not follow them, or that has
  /// changed itself, starts anew. Looks at the disk, so call it a few times a second at most.
  void followFiles();

  const View& view() const { return view_; }

 private:
  bool loadJob();
  bool draw();
  void note(bool succeeded);

  const PanelFacts facts_;
  Console& console_;
  const std::atomic<bool>& stop_;
  const script::Plugin plugin_;
  TablePart part_;
  FileWatch watch_;
  std::unique_ptr<PanelScript> script_;
  View view_;
};

/// What a panel is made from, on a page or as a picture.
struct PanelSetup {
  std::string plugin;
  PanelFacts facts;
  bool verbose = false;  ///< the plug-in's lines go to standard error too
};

/// A picture after a few steps of the operator.
struct PictureOrder {
  std::string svg;          ///< the file, "-" for standard output; empty: none
  std::string png;          ///< the file; empty: none
  std::optional<int> page;  ///< reached with the page keys; none: where the script is
  std::optional<tagPOINT> click;
  unsigned long long step = 100;  ///< milliseconds from one step to the next
};

/// Runs the script, takes the steps and writes the picture, the same bytes each time. Returns the
/// exit code; a script that fails is told on standard error. Throws Error when something cannot be
/// loaded or written, or when there is no such page.
int drawPanel(const PanelSetup& setup, const PictureOrder& order);

}  // namespace desk::panel
