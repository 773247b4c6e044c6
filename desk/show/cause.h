// Why a script command raises.
#pragma once

#include <string>

#include "desk/show/answers.h"

namespace desk::show {

/// What check says of the value in `file` that makes a command raise: "; FILE:LINE:COLUMN: ...".
/// Empty when it says nothing.
std::string causeOf(const Raised& raised, const std::string& file);

/// The same of the content of a file.
std::string causeOf(const Raised& raised, const std::string& file, const std::string& bytes);

}  // namespace desk::show
