#include "host/media.h"

#include "desk/host/paths.h"

void CHmiMedia::getUdiskPath(std::string& path) {
  path = deskhost::usbMount();
}
