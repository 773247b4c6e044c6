// XML documents written into tests.
#pragma once

#include <tinyxml2.h>

#include <stdexcept>
#include <string>

#include "xml/xml_analysis.h"

namespace test_support {

/// Reads a document as the reader does once the host has loaded it. Throws when the test's own text
/// is no XML, and whatever the reader throws.
inline int readXmlText(XmlAnalysis& reader, const std::string& text) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  if (document.Parse(text.c_str()) != tinyxml2::XML_SUCCESS) {
    throw std::invalid_argument(document.ErrorStr());
  }
  return reader.analysisData(document.RootElement());
}

/// A job with these elements in its one piece, which also has the one element a piece must have.
inline std::string jobWithPiece(const std::string& elements) {
  return "<Job><Version>1.0</Version><Bar><Piece><CtrsZ>0</CtrsZ>" + elements +
         "</Piece></Bar></Job>";
}

/// A work with its four numbers.
inline std::string work(const std::string& name, const std::string& positionX = "1") {
  return "<Work><Name>" + name + "</Name><ProfiLav>2</ProfiLav><PositionX>" + positionX +
         "</PositionX><PositionY>-3.5</PositionY><PositionZ>4e1</PositionZ></Work>";
}

}  // namespace test_support
