// Numbers as people write them.
#pragma once

#include <string>

namespace desk {

/// The shortest decimal text that reads back as the same number: "12.1", not "12.100000000000000".
std::string shortestText(double number);

}  // namespace desk
