// The desk's rules for JSON and XML documents, apart from where the text comes from.
#pragma once

#include <functional>
#include <string>

namespace Json {
class Value;
}
namespace tinyxml2 {
class XMLDocument;
}

namespace deskhost {

/// Why a document is refused.
struct DocumentFault {
  int line = 0;    ///< from 1; 0 when the fault has no place
  int column = 0;  ///< from 1, in bytes; 0 when only the line is known
  std::string reason;
};

/// "<name>:<line>:<column>: <reason>", without the numbers that are not known. An empty name shows
/// as two quotes.
std::string describe(const std::string& name, const DocumentFault& fault);

/// Parses one JSON value of any kind, surrounded by blanks and comments at most. A byte order mark
/// in front and one zero byte at the end are passed over; of equal keys the last one wins.
/// Nesting is bounded by the settings.
/// @param root unspecified after a failure
/// Throws std::bad_alloc only.
bool parseJson(const std::string& text, Json::Value& root, DocumentFault& fault);

/// Parses an XML document of exactly one root element into `document`, which is empty after a
/// failure. One zero byte at the end is passed over. The library bounds the nesting, the settings
/// the attributes of one element. Throws std::bad_alloc only.
bool parseXml(const std::string& text, tinyxml2::XMLDocument& document, DocumentFault& fault);

using DocumentParser = std::function<bool(const std::string& text, DocumentFault& fault)>;

/// Reads the document `name` of the controller and gives its text to `parse`. A failure is logged.
/// @return whether it was read and parsed; exceptions of `parse` count as failures
bool loadDocument(const std::string& name, const DocumentParser& parse) noexcept;

}  // namespace deskhost
