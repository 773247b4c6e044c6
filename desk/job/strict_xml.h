// What standard XML does not have and the panel's library takes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Looks whether a document is well-formed XML of UTF-8 with at most a declaration that says so in
/// front, elements without attributes and texts without references. Almost every job is.
/// @return the encoding that the declaration names, empty where there is none; nothing for all
///         other documents, which may be well-formed too
std::optional<std::string_view> encodingOfPlainXml(std::string_view document);

/// Where references to the zero character ("&#0;") stand in a document's texts: the library hands
/// out a text up to there.
std::vector<std::size_t> zeroReferences(std::string_view document);

}  // namespace desk::job
