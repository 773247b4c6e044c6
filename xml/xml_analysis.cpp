#include "xml/xml_analysis.h"

#include <iostream>

#include "host/cbl.h"
#include "xml/xml_reading.h"

namespace xml_reading {

template class Reading<Unwatched>;

}  // namespace xml_reading

namespace {

xml_reading::Reading<xml_reading::Unwatched> readingInto(XmlAnalysis& reader) {
  static xml_reading::Unwatched nobody;
  return {reader, nobody};
}

}  // namespace

XmlAnalysis::XmlAnalysis() = default;

int XmlAnalysis::xmlAnalysis(std::string path) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  tinyxml2::XMLElement* root = nullptr;
  if (cbl::loadXmlFile(path, document, root) < 0 || root == nullptr) {
    std::cout << "read File error............." << std::endl;
    return -2;
  }
  const int code = analysisData(root);
  if (code >= 0) return 0;
  std::cout << "analysis xml error............." << std::endl;
  return code;
}

int XmlAnalysis::analysisData(tinyxml2::XMLElement* root) {
  readingInto(*this).data(*root);
  return 0;
}

int XmlAnalysis::analysisBar(tinyxml2::XMLElement* root) {
  readingInto(*this).bars(*root);
  return 0;
}

int XmlAnalysis::analysisPiece(tinyxml2::XMLElement* bar) {
  readingInto(*this).pieces(*bar);
  return 0;
}

int XmlAnalysis::analysisCut(tinyxml2::XMLElement* piece) {
  xml_reading::Children children(*piece);
  readingInto(*this).cuts(children);
  return 0;
}

int XmlAnalysis::analysisWork(tinyxml2::XMLElement* piece) {
  xml_reading::Children children(*piece);
  readingInto(*this).works(children);
  return 0;
}
