#include <tinyxml2.h>

#include "desk/host/documents.h"
#include "host/cbl.h"

namespace deskhost {
namespace {

struct ErrorText {
  tinyxml2::XMLError error;
  const char* text;
};

constexpr ErrorText kErrorTexts[] = {
    {tinyxml2::XML_ERROR_PARSING_ELEMENT, "malformed tag"},
    {tinyxml2::XML_ERROR_PARSING_ATTRIBUTE, "malformed attribute, or the same one twice"},
    {tinyxml2::XML_ERROR_PARSING_TEXT, "text that no tag ends"},
    {tinyxml2::XML_ERROR_PARSING_CDATA, "character data section without its end"},
    {tinyxml2::XML_ERROR_PARSING_COMMENT, "comment without its end"},
    {tinyxml2::XML_ERROR_PARSING_DECLARATION, "declaration without its end, or out of place"},
    {tinyxml2::XML_ERROR_PARSING_UNKNOWN, "declaration without its end"},
    {tinyxml2::XML_ERROR_PARSING, "the document ends within an element"},
    {tinyxml2::XML_ERROR_EMPTY_DOCUMENT, kEmptyDocument},
    {tinyxml2::XML_ERROR_MISMATCHED_ELEMENT, "element without its end tag"},
    {tinyxml2::XML_ELEMENT_DEPTH_EXCEEDED, "elements are nested too deep"},
};

DocumentFault libraryFault(const tinyxml2::XMLDocument& document) {
  for (const ErrorText& known : kErrorTexts) {
    if (known.error == document.ErrorID()) return {document.ErrorLineNum(), 0, known.text};
  }
  return {document.ErrorLineNum(), 0, document.ErrorName()};
}

bool hasOneRoot(const tinyxml2::XMLDocument& document, DocumentFault& fault) {
  const tinyxml2::XMLElement* const first = document.RootElement();
  const tinyxml2::XMLElement* const second = first == nullptr ? first : first->NextSiblingElement();
  if (first == nullptr) fault = {0, 0, "there is no root element"};
  if (second != nullptr) fault = {second->GetLineNum(), 0, "a second root element", false, true};
  return first != nullptr && second == nullptr;
}

}  // namespace

bool parseXml(const std::string& text, tinyxml2::XMLDocument& document, DocumentFault& fault) {
  document.Clear();
  if (!checkXmlTags(text, fault)) return false;
  if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
    fault = libraryFault(document);
  } else if (hasOneRoot(document, fault) &&
             checkElements(*document.RootElement(), text.size(), fault)) {
    return true;
  }
  document.Clear();
  return false;
}

}  // namespace deskhost

namespace cbl {

int loadXmlFile(const std::string& path, tinyxml2::XMLDocument& document,
                tinyxml2::XMLElement*& root) {
  root = nullptr;
  const bool loaded =
      deskhost::loadDocument(path, [&](const std::string& text, deskhost::DocumentFault& fault) {
        return deskhost::parseXml(text, document, fault);
      });
  if (!loaded) {
    document.Clear();
    return -1;
  }
  root = document.RootElement();
  return 0;
}

}  // namespace cbl
