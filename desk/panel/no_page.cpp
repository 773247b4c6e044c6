// In place of the page where there is no HTTP library.
#include "desk/base/errors.h"
#include "desk/panel/panel.h"

namespace desk::panel {

int servePanel(const PanelSetup&, int, bool) {
  throw Error(kExitIoError, "built without the page; --svg and --png draw the panel");
}

}  // namespace desk::panel
