#include "desk/job/strict_xml.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace desk::job {

namespace {

struct ErrorText {
  XML_Error error;
  const char* text;
};
constexpr ErrorText kErrorTexts[] = {
    {XML_ERROR_INVALID_TOKEN, "a character that may not stand here"},
    {XML_ERROR_SYNTAX, "text or markup that may not stand here"},
    {XML_ERROR_UNDEFINED_ENTITY, "an entity that is not declared"},
    {XML_ERROR_BAD_CHAR_REF, "a reference to a character that XML does not have"},
    {XML_ERROR_MISPLACED_XML_PI, "an XML declaration that is not at the very start"},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "text behind the root"},
    {XML_ERROR_DUPLICATE_ATTRIBUTE, "an attribute that is there twice"},
};

std::string textOf(XML_Error error) {
  const auto known = std::find_if(std::begin(kErrorTexts), std::end(kErrorTexts),
                                  [&](const ErrorText& row) { return row.error == error; });
  if (known != std::end(kErrorTexts)) return known->text;
  return "what a strict parser calls \"" + std::string(XML_ErrorString(error)) + "\"";
}

/// Where the reference starts that `offset` lies in or ends; `offset` itself outside of one.
std::size_t referenceAt(std::string_view document, std::size_t offset) {
  constexpr std::size_t kLongest = 64;
  std::size_t start = std::min(offset, document.size());
  const std::size_t least = start - std::min(start, kLongest);
  constexpr std::string_view kEnds = "<>;\"' \t\r\n";
  while (start > least && kEnds.find(document[start - 1]) == std::string_view::npos) {
    if (document[--start] == '&') return start;
  }
  return offset;
}

struct ParserFree {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<XML_ParserStruct, ParserFree>;

/// What the parser's callbacks are given.
struct Reading {
  XML_Parser parser;
  std::string& encoding;
};

void XMLCALL onDeclaration(void* reading, const XML_Char*, const XML_Char* encoding, int) {
  if (encoding != nullptr) static_cast<Reading*>(reading)->encoding = encoding;
}

void XMLCALL onEntity(void* reading, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                      const XML_Char*, const XML_Char*, const XML_Char*) {
  XML_StopParser(static_cast<Reading*>(reading)->parser, XML_FALSE);
}

}  // namespace

StrictXml judgeStrictly(std::string_view document) {
  StrictXml judged;
  // A zero byte at the end is passed over, as by the panel's library.
  if (!document.empty() && document.back() == '\0') document.remove_suffix(1);
  if (const auto encoding = encodingOfPlainXml(document)) {
    judged.encoding = *encoding;
    return judged;
  }
  // Whatever the document declares: a panel takes its bytes as they are.
  const Parser parser(XML_ParserCreate("UTF-8"));
  if (!parser) throw std::bad_alloc();
  Reading reading{parser.get(), judged.encoding};
  XML_SetUserData(parser.get(), &reading);
  XML_SetXmlDeclHandler(parser.get(), onDeclaration);
  XML_SetEntityDeclHandler(parser.get(), onEntity);
  const int size = static_cast<int>(document.size());
  if (XML_Parse(parser.get(), document.data(), size, 1) == XML_STATUS_OK) return judged;
  const XML_Error error = XML_GetErrorCode(parser.get());
  if (error == XML_ERROR_ABORTED) return judged;
  if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  const auto offset = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
  const std::size_t reference = referenceAt(document, offset);
  const bool isLoose = error == XML_ERROR_INVALID_TOKEN && reference != offset;
  judged.fault = {isLoose ? "an ampersand that starts no reference (write &amp;)" : textOf(error),
                  isLoose ? reference : offset};
  return judged;
}

}  // namespace desk::job
