#include "xml/xml_analysis.h"

#include <tinyxml2.h>

#include <iostream>
#include <stdexcept>

#include "host/cbl.h"
#include "model/assembly.h"
#include "model/number_text.h"
#include "xml/xml_elements.h"

namespace {

using model::Key;
using model::KeyKind;
using tinyxml2::XMLElement;

/// Finds the children of an element by name, quickest when they stand in the order in which they
/// are asked for.
///
/// It knows how far the elements asked for stand side by side from the first child on. No other
/// name is among those, so the search for another name may begin behind them. Each name may be
/// asked for once.
class Children {
 public:
  explicit Children(XMLElement& parent) : parent_(parent) {}

  /// The text of the first child of that name, null where there is none.
  const char* text(const char* name) {
    XMLElement* const found = next(name);
    if (found == nullptr) return nullptr;
    advance(found);
    return found->GetText();
  }

  /// Calls read(child) for every child of that name, in document order.
  template <class Read>
  void forEach(const char* name, Read&& read) {
    for (XMLElement* child = next(name); child != nullptr;
         child = child->NextSiblingElement(name)) {
      advance(child);
      read(*child);
    }
  }

 private:
  XMLElement* next(const char* name) const {
    return known_ == nullptr ? parent_.FirstChildElement(name) : known_->NextSiblingElement(name);
  }

  void advance(XMLElement* found) {
    if (found == next(nullptr)) known_ = found;
  }

  XMLElement& parent_;
  XMLElement* known_ = nullptr;  ///< the last of the elements side by side
};

const char* requiredText(const char* text) {
  // The words are a contract: what the standard library says of a null text varies by version.
  if (text == nullptr) throw std::logic_error("basic_string::_M_construct null not valid");
  return text;
}

template <class Record>
void readElement(Children& children, const Key<Record>& key, Record& record) {
  const char* const text = children.text(key.spelling);
  switch (key.kind) {
    case KeyKind::Text:
      if (text != nullptr) record.*key.field.text = text;
      break;
    case KeyKind::Number:
      record.*key.field.number = model::toDouble(requiredText(text));
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
void readElements(Children& children, const Key<Record> (&keys)[count], Record& record,
                  std::size_t from = 0, std::size_t to = count) {
  for (std::size_t i = from; i < to; ++i) readElement(children, keys[i], record);
}

/// Fills a record from an element whose children lead to no other level.
template <class Record, std::size_t count>
void readElements(XMLElement& parent, const Key<Record> (&keys)[count], Record& record) {
  Children children(parent);
  readElements(children, keys, record);
}

void readCuts(Children& piece, CUT_T& cut, PIECE_T& current) {
  piece.forEach(xml_elements::kCuts, [&](XMLElement& element) {
    readElements(element, xml_elements::kCut, cut);
    current.Length = cut.Length;
    current.sxB = cut.sxB;
    current.dxB = cut.dxB;
  });
}

void readWorks(Children& piece, WORK_T& work, PIECE_T& current) {
  piece.forEach(xml_elements::kWorks, [&](XMLElement& element) {
    readElements(element, xml_elements::kWork, work);
    current.work.push_back(work);
  });
}

std::size_t countOf(XMLElement& parent, const char* name) {
  std::size_t count = 0;
  Children(parent).forEach(name, [&](XMLElement&) { ++count; });
  return count;
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
    data.Bar.reserve(data.Bar.size() + countOf(*root, xml_elements::kBars));
    Children(*root).forEach(xml_elements::kBars, [&](XMLElement& bar) {
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
    curBar.piece.reserve(curBar.piece.size() + countOf(*bar, xml_elements::kPieces));
    Children(*bar).forEach(xml_elements::kPieces, [&](XMLElement& element) {
      Children piece(element);
      readElements(piece, kPiece, curPiece, 0, beforeCuts);
      readCuts(piece, curCut, curPiece);
      readElements(piece, kPiece, curPiece, beforeCuts);
      readWorks(piece, curWork, curPiece);
      model::appendFinished(curBar.piece, curPiece, &PIECE_T::work);
    });
    return 0;
  });
}

int XmlAnalysis::analysisCut(tinyxml2::XMLElement* piece) {
  Children children(*piece);
  readCuts(children, curCut, curPiece);
  return 0;
}

int XmlAnalysis::analysisWork(tinyxml2::XMLElement* piece) {
  Children children(*piece);
  readWorks(children, curWork, curPiece);
  return 0;
}
