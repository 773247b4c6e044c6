// What ships with the program, and where it lies on this PC.
#pragma once

#include <string>

namespace desk {

/// The plug-in beside the program, or in the package's library folder. Throws Error when neither
/// is there.
std::string shippedPlugin();

/// The example tree that ships with the program, for reading. Throws Error when there is none.
std::string shippedExamples();

/// The example tree for scripts, which write to it. The tree itself where the program was built. Of an
/// installed program a copy in the user's data folder, made when there is none yet, with a line about
/// it on standard error; the installed one where no copy can be made, with the reason.
std::string exampleRoot();

}  // namespace desk
