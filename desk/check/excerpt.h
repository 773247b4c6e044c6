// The part of a source line that is shown below a finding.
#pragma once

#include <cstddef>
#include <string>

#include "desk/job/source_text.h"

namespace desk::check {

using job::Position;
using job::SourceText;

struct Excerpt {
  std::string text;       ///< fits into the columns asked for; what cannot be shown is spelled out
  std::size_t start = 0;  ///< at which column of `text` the place is, from 0
  std::size_t width =
      1;  ///< how many columns the word at the place fills: a text, a number, a name
};

/// Cuts a line around a place, or shows its start when only the line is known. Takes the same time
/// in a job that is one line of many megabytes.
Excerpt excerptOf(const SourceText& source, const Position& at, std::size_t columns);

}  // namespace desk::check
