// Finds tables of names and functions, such as the registration of a script module.
#pragma once

#include <set>
#include <string>

#include "desk/doctor/elf_image.h"

namespace desk {

/// The names that stand beside a function in initialised data: pairs {name, function}, which the
/// loader fills with addresses. Pairs that the program builds as it runs are not seen.
std::set<std::string> functionNames(const ElfImage& image);

}  // namespace desk
