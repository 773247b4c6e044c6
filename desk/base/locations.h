// Where cusdesk finds what ships with it.
#pragma once

#include <string>

namespace desk {

/// The plug-in beside the program, or in the package's library folder. Throws Error when neither
/// is there.
std::string shippedPlugin();

/// The example tree that ships with the program. Throws Error when there is none.
std::string shippedExamples();

}  // namespace desk
