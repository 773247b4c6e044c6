// What a parsed XML document no longer tells.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace desk::job {

/// Where references to the zero character ("&#0;") stand in a document's texts: the library hands
/// out a text up to there.
std::vector<std::size_t> zeroReferences(std::string_view document);

}  // namespace desk::job
