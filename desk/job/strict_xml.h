// What standard XML does not have and the panel's library takes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace desk::job {

/// Why a strict parser refuses a document.
struct StrictXmlFault {
  std::string what;    ///< for a message: "an entity that is not declared", ...
  std::size_t offset;  ///< of the first fault, the only one that a strict parser tells
};

/// How another program sees an XML document whose bytes it takes for UTF-8.
struct StrictXml {
  std::optional<StrictXmlFault> fault;
  std::string encoding;  ///< as the document declares it; empty when it does not
};

/// Judges a document in a time and memory in proportion to its size. Entities are not expanded:
/// from the first declaration of one on nothing is judged.
StrictXml judgeStrictly(std::string_view document);

}  // namespace desk::job
