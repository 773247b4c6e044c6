#include "xml/xml_analysis.h"

#include <tinyxml2.h>

#include <iostream>
#include <stdexcept>

#include "host/cbl.h"
#include "model/assembly.h"
#include "xml/xml_elements.h"

namespace {

using model::Key;
using model::KeyKind;

/// The text of a child element, null where there is none.
const char* childText(const tinyxml2::XMLElement& parent, const char* name) {
  const tinyxml2::XMLElement* child = parent.FirstChildElement(name);
  return child == nullptr ? nullptr : child->GetText();
}

const char* requiredText(const char* text) {
  // The words are a contract: what the standard library says of a null text varies by version.
  if (text == nullptr) throw std::logic_error("basic_string::_M_construct null not valid");
  return text;
}

template <class Record>
void readElement(const tinyxml2::XMLElement& parent, const Key<Record>& key, Record& record) {
  const char* text = childText(parent, key.spelling);
  switch (key.kind) {
    case KeyKind::Text:
      if (text != nullptr) record.*key.field.text = text;
      break;
    case KeyKind::Number:
      record.*key.field.number = std::stod(requiredText(text));
      break;
    case KeyKind::Required:
      requiredText(text);
      break;
    case KeyKind::IntegerText:
    case KeyKind::Integer:
    case KeyKind::Flag:
    case KeyKind::Ignored:
      break;
  }
}

template <class Record, std::size_t count>
void readElements(const tinyxml2::XMLElement& parent, const Key<Record> (&keys)[count],
                  Record& record, std::size_t from = 0, std::size_t to = count) {
  for (std::size_t i = from; i < to; ++i) readElement(parent, keys[i], record);
}

/// Calls read(child) for every child element of that name, in document order.
template <class Read>
void forEachChild(tinyxml2::XMLElement& parent, const char* name, Read&& read) {
  for (tinyxml2::XMLElement* child = parent.FirstChildElement(name); child != nullptr;
       child = child->NextSiblingElement(name)) {
    read(*child);
  }
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
  data.Bar.clear();
  // kept: a root without any child leaves the header of the file before
  if (root->FirstChildElement(nullptr) != nullptr) {
    readElements(*root, xml_elements::kHeader, data);
  }
  analysisBar(root);
  return 0;
}

int XmlAnalysis::analysisBar(tinyxml2::XMLElement* root) {
  return model::dropOnThrow(curBar.piece, [&] {
    forEachChild(*root, xml_elements::kBars, [&](tinyxml2::XMLElement& bar) {
      readElements(bar, xml_elements::kBar, curBar);
      analysisPiece(&bar);
      model::appendFinished(data.Bar, curBar, &BAR_T::piece);
    });
    return 0;
  });
}

int XmlAnalysis::analysisPiece(tinyxml2::XMLElement* bar) {
  using xml_elements::kPiece;
  constexpr std::size_t beforeCuts = xml_elements::kPieceRowsBeforeCuts;
  return model::dropOnThrow(curPiece.work, [&] {
    forEachChild(*bar, xml_elements::kPieces, [&](tinyxml2::XMLElement& piece) {
      readElements(piece, kPiece, curPiece, 0, beforeCuts);
      analysisCut(&piece);
      readElements(piece, kPiece, curPiece, beforeCuts);
      analysisWork(&piece);
      model::appendFinished(curBar.piece, curPiece, &PIECE_T::work);
    });
    return 0;
  });
}

int XmlAnalysis::analysisCut(tinyxml2::XMLElement* piece) {
  forEachChild(*piece, xml_elements::kCuts, [&](tinyxml2::XMLElement& cut) {
    readElements(cut, xml_elements::kCut, curCut);
    curPiece.Length = curCut.Length;
    curPiece.sxB = curCut.sxB;
    curPiece.dxB = curCut.dxB;
  });
  return 0;
}

int XmlAnalysis::analysisWork(tinyxml2::XMLElement* piece) {
  forEachChild(*piece, xml_elements::kWorks, [&](tinyxml2::XMLElement& work) {
    readElements(work, xml_elements::kWork, curWork);
    curPiece.work.push_back(curWork);
  });
  return 0;
}
