// How much room text takes on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

/// Columns that UTF-8 text fills: two for each wide character, none for a combining mark, one for a
/// byte that is no UTF-8. Control characters count as none: make them visible first.
std::size_t displayWidth(std::string_view text);

/// `text` when it fits into `columns`, else its beginning and an ellipsis.
std::string fitted(const std::string& text, std::size_t columns);

/// `text` with blanks behind it, or in front of it, that fill it up to `columns`.
std::string padded(const std::string& text, std::size_t columns, bool toRight = false);

}  // namespace desk
