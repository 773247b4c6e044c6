// XML of the simplest form, judged without a parser.
#pragma once

#include <optional>
#include <string_view>

namespace desk::job {

/// Looks whether a document is well-formed XML of UTF-8 with at most a declaration that says so in
/// front, elements without attributes and texts without references. Almost every job is.
/// @return the encoding that the declaration names, empty where there is none; nothing for all
/// other
///         documents, which may be well-formed too
std::optional<std::string_view> encodingOfPlainXml(std::string_view document);

}  // namespace desk::job
