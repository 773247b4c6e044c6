// Removable media as the panel runtime sees them.
#pragma once

#include <string>

// --- names fixed by the host ---------------------------------------------------------------------

class CHmiMedia {
 public:
  /// Sets `path` to the mount path of the USB disk, with a trailing '/'.
  static void getUdiskPath(std::string& path);
};
