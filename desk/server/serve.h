// The page in the browser, from the command line's side.
#pragma once

#include "desk/panel/panel.h"

namespace desk::server {

/// Shows the panel on a page until the program is told to end by SIGINT or SIGTERM; a second one
/// ends it at once. Returns the exit code. Throws Error when the port is taken or something cannot
/// be loaded.
/// @param port 0: a free one
/// @param open whether to open a browser
int servePanel(const panel::PanelSetup& setup, int port, bool open);

}  // namespace desk::server
