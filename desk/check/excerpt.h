// The part of a source line that is shown below a finding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace desk::check {

struct Excerpt {
  std::string text;       ///< fits into the columns asked for; what cannot be shown is spelled out
  std::size_t caret = 0;  ///< below which column of `text` the place is, from 0
};

/// Cuts a line around a place. Takes time for the characters in front of the place only.
/// @param column the place in characters, from 1; 0: the line's start
Excerpt excerptOf(std::string_view line, int column, std::size_t columns);

}  // namespace desk::check
