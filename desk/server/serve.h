// The page in the browser, from the command line's side.
#pragma once

#include <string>
#include <vector>

#include "desk/panel/panel.h"

namespace desk::server {

struct PageSetup {
  panel::PanelSetup panel;
  std::vector<std::string> jobs;  ///< files, "-" for standard input
  std::string view;               ///< the one that the browser opens at: "bars", "panel"
  int port = 0;                   ///< 0: a free one
  bool opens = true;              ///< a browser
};

/// Shows jobs and a panel on a page until the program is told to end by SIGINT or SIGTERM; a second
/// one ends it at once. Returns the exit code. Throws Error when the port is taken or something
/// that the panel is made of cannot be loaded. What is wrong with a job the page tells.
int serve(const PageSetup& setup);

}  // namespace desk::server
