// UTF-8, as far as names and log lines need it.
#pragma once

#include <cstddef>
#include <string_view>

namespace desk {

/// Bytes of the character that starts at `at`, 1 to 4. 0 when no well-formed one does: overlong
/// forms, surrogates and values past U+10FFFF are not well formed. `at` lies inside `text`.
std::size_t utf8CharacterSize(std::string_view text, std::size_t at);

bool isUtf8(std::string_view text);

}  // namespace desk
