// In place of the page where there is no HTTP library.
#include "desk/base/errors.h"
#include "desk/server/serve.h"

namespace desk::server {

int serve(const PageSetup&) {
  throw Error(kExitIoError, "built without the page; cusdesk panel --svg and --png draw the panel");
}

}  // namespace desk::server
