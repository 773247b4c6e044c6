// The two ways to have a panel: on a page, and as a picture in a file.
#pragma once

#include <optional>
#include <string>

#include "desk/panel/panel.h"

namespace desk {

/// What both need.
struct PanelSetup {
  std::string plugin;
  PanelFacts facts;
  bool verbose = false;  ///< the plug-in's lines go to standard error too
};

/// A picture after a few steps of the operator.
struct PictureOrder {
  std::string svg;  ///< the file, "-" for standard output; empty: none
  std::string png;  ///< the file; empty: none
  int page = 1;     ///< reached with the page key
  std::optional<tagPOINT> click;
  unsigned long long step = 100;  ///< milliseconds from one step to the next
};

/// Runs the script, takes the steps and writes the picture, the same bytes each time. Returns the
/// exit code; a script that fails is told on standard error. Throws Error when something cannot be
/// loaded or written, or when there is no such page.
int drawPanel(const PanelSetup& setup, const PictureOrder& order);

/// Shows the panel on a page until the program is told to end by SIGINT or SIGTERM; a second one
/// ends it at once. Returns the exit code. Throws Error when the port is taken or something cannot
/// be loaded.
/// @param port 0: a free one
/// @param open whether to open a browser
int servePanel(const PanelSetup& setup, int port, bool open);

}  // namespace desk
