// JSON and XML documents at the desk: how a file is read, and what it may hold.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace Json {
class Value;
}
namespace tinyxml2 {
class XMLDocument;
class XMLElement;
}  // namespace tinyxml2

namespace deskhost {

/// Why a document is refused.
struct DocumentFault {
  int line = 0;    ///< from 1; 0 when the fault has no place
  int column = 0;  ///< from 1, in characters; 0 when only the line is known
  std::string reason;
  bool isOnlyHere = false;  ///< a bound of the settings was left: a panel would load the document
  bool isBehind = false;    ///< it stands behind a document, which a panel may load without it
};

/// What is said after the reason of a fault that is only here.
constexpr char kOnlyHere[] = "a panel would load it: only cusdesk refuses";

/// The reason that a document without any text is refused for.
constexpr char kEmptyDocument[] = "the document is empty";

/// The reason that a document of more than `maxDocumentBytes` of the settings is refused for.
std::string tooLargeReason();

/// The fault at an offset of a document, from 0. A byte order mark counts for no column, and a byte
/// that is no UTF-8 for one.
DocumentFault faultAt(std::string_view text, std::size_t offset, const std::string& reason);

/// "<name>:<line>:<column>: <reason>", without the numbers that are not known. An empty name shows
/// as two quotes.
std::string faultText(const std::string& name, const DocumentFault& fault);

/// Parses one JSON value of any kind, surrounded by blanks and comments at most. A byte order mark
/// in front and one zero byte at the end are passed over; of equal keys the last one wins.
/// The settings bound nesting and records.
/// @param root unspecified after a failure
/// Throws std::bad_alloc only.
bool parseJson(const std::string& text, Json::Value& root, DocumentFault& fault);

/// Parses an XML document of exactly one root element into `document`, which is empty after a
/// failure. One zero byte at the end is passed over. The library bounds the nesting, the settings
/// attributes, references and records. Throws std::bad_alloc only.
bool parseXml(const std::string& text, tinyxml2::XMLDocument& document, DocumentFault& fault);

/// Walks over the tags of `text`, in time proportional to its size, and finds what the XML library
/// would pay dearly for or pass over in silence: an element with more than `maxXmlAttributes`
/// attributes, a text with more than `maxXmlReferences` character references that do not end, an
/// end tag where no element is open, bytes after a zero byte. Says nothing about text that is not
/// well formed otherwise.
/// @return whether none of these was found; otherwise `fault` is set
bool checkXmlTags(const std::string& text, DocumentFault& fault);

/// Whether the records of a job, each with the texts that it carries over from the one before it,
/// stay within the memory that the settings grant to a document of that size. An element of a few
/// bytes makes a record of thousands.
/// @return whether they do; otherwise `fault` is set, at the first element beyond
bool checkElements(const Json::Value& root, std::string_view text, DocumentFault& fault);
bool checkElements(const tinyxml2::XMLElement& root, std::size_t documentBytes,
                   DocumentFault& fault);

/// Reads the regular file `file` of this PC whole into `text`, at most `maxDocumentBytes` of the
/// settings. Never waits: anything but a regular file is refused once it is open, so a pipe
/// without a writer does not hang. A file that grows while it is read is bounded as well. "-" is
/// standard input, whatever that is; its text is kept and given again.
/// @param text   unspecified after a failure
/// @param reason set on failure only, without the name: what the system says about the file
bool readDocumentFile(const std::string& file, std::string& text, std::string& reason);

using DocumentParser = std::function<bool(const std::string& text, DocumentFault& fault)>;

/// Reads the document `name` of the controller and gives its text to `parse`. A failure is logged.
/// @return whether it was read and parsed; exceptions of `parse` count as failures
bool loadDocument(const std::string& name, const DocumentParser& parse) noexcept;

}  // namespace deskhost
