// In place of the page where there is no HTTP library.
#include "desk/base/errors.h"
#include "desk/panel/sessions.h"

namespace desk {

int servePanel(const PanelSetup&, int, bool) {
  throw Error(kExitIoError, "built without the page; --svg and --png draw the panel");
}

}  // namespace desk
