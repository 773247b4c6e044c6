// Barcodes that scanners read.
#pragma once

#include <string>

namespace desk::show {

/// A text as Code 128, set B: the widths of dark and light stripes in turn, in modules, from the
/// first dark one on. Empty for what that cannot hold: anything but printable ASCII, and no text.
std::string code128(const std::string& text);

/// The whole width of such a code, with the light zones that scanners need on both sides, modules.
constexpr int kQuietZone = 10;
int widthOfCode(const std::string& stripes);

}  // namespace desk::show
