// The panel on a PC: plug-in, table part and script, and what the operator sees of them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "desk/panel/file_watch.h"
#include "desk/panel/panel_script.h"

namespace desk {

/// What the operator sees.
struct View {
  std::uint64_t picture = 0;  ///< counts the pictures fetched
  std::string svg;            ///< the last of them
  Page page{1, 1};
  unsigned short rows = 0;      ///< in the whole list
  std::optional<int> selected;  ///< number of a row in the whole list, from 1
  bool failed = false;          ///< the script or a handler of it met an error
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

}  // namespace desk
