// Text of any origin for an XML document.
#pragma once

#include <string>

namespace desk {

/// `text` as UTF-8 that an XML document may hold and a line of text can show: control characters
/// become blanks, everything else that has no place there U+FFFD. Escaping is left to the writer.
std::string xmlText(const std::string& text);

}  // namespace desk
