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

}  // namespace desk::show
