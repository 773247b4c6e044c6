#include "desk/host/settings.h"

namespace deskhost {

Settings& settings() {
  static Settings instance;
  return instance;
}

}  // namespace deskhost
