// Pictures as files.
#pragma once

#include <string>

namespace desk {

/// Writes `svg` to `file`, "-" for standard output. Throws Error when it cannot be written whole.
void writeSvg(const std::string& svg, const std::string& file);

/// Writes `svg` to the PNG `file`, with the converter of the system. Throws Error when there is no
/// converter, or when it fails.
/// @param dotsPerInch for sizes that are given in millimetres
void writePng(const std::string& svg, const std::string& file, int dotsPerInch = 96);

}  // namespace desk
