// A job file of this PC, under a name that scripts and the plug-in's readers can load.
#pragma once

#include <string>

namespace desk::job {

/// A job as the services present it.
struct PresentedJob {
  std::string name;            ///< what to give to getjson_Flash
  std::string controllerPath;  ///< where the readers find it: below the flash directory of its type
};

/// Presents `file`, which may lie anywhere on this PC, as a file in the controller's flash. As for
/// the loading commands only a name that ends in ".xml" is an XML job. Throws Error when there is
/// no such file.
PresentedJob presentJob(const std::string& file);

}  // namespace desk::job
