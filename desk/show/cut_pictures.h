// The pictures of a cut list, as SVG inside its page.
#pragma once

#include <tinyxml2.h>

#include <string>

#include "desk/job/bar_layout.h"

namespace desk::show {

/// A piece from the side, which shows the way its ends lean. Length and width are not to scale.
void drawSketch(const job::PiecePlace& piece, tinyxml2::XMLPrinter& page);

/// A barcode in whole pixels, as scanners fail where stripes end between two; nothing for a text
/// that Code 128 cannot hold, or not in the width of the list.
void drawCode(const std::string& text, tinyxml2::XMLPrinter& page);

/// A text as Code 128, set B: the widths of dark and light stripes in turn, in modules, from the
/// first dark one on. Empty for what that cannot hold: anything but printable ASCII, and no text.
std::string code128(const std::string& text);

/// The whole width of such a code, with the light zones that scanners need on both sides, modules.
constexpr int kQuietZone = 10;
int widthOfCode(const std::string& stripes);

}  // namespace desk::show
