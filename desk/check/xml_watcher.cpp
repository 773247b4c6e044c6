#include "desk/check/xml_watcher.h"

#include <tinyxml2.h>

#include <stdexcept>

#include "xml/xml_reading.h"

namespace desk::check {

using model::Key;
using model::KeyKind;
using tinyxml2::XMLElement;

std::string XmlWatcher::read(XMLElement& root, const Sources& sources, Findings& findings) {
  start(sources, findings);
  try {
    xml_reading::Reading<XmlWatcher>(reader_, *this).data(root);
    finish();
    return {};
  } catch (const std::logic_error& error) {
    finish();
    reportRaised(error.what());
    traced_.bars.resize(reader_.data.Bar.size());
    return error.what();
  }
}

void XmlWatcher::begins(Level level, const XMLElement& element) {
  enter(level);
  if (level == Level::Header) {
    traced_.place = placeOf(element);
    reportAround(*element.GetDocument());
  }
  if (level == Level::Cut) beforeCut_ = trace<CUT_T>();
  reportStrangers(element, level);
}

template <class Record>
void XmlWatcher::looksFor(const XMLElement& parent, const Key<Record>& key,
                          const XMLElement* child) {
  wanted_ = {&parent, child, key.spelling};
  if (child != nullptr) reportRepeated(*child, FieldsOf<Record>::level);
}

template <class Record>
void XmlWatcher::takes(const XMLElement& child, const Key<Record>& key) {
  if constexpr (FieldsOf<Record>::level == Level::Work) {
    if (key.kind == KeyKind::Number) reportNumber(child, reader_.curWork.*key.field.number);
  }
  noteOrigin<Record>(fieldOf(key), placeOf(child));
}

void XmlWatcher::ends(Level level, const XMLElement& element) {
  Absent absent;
  switch (level) {
    case Level::Header:
      collectAbsent<xml_elements::kHeaderTable>(reader_.data, absent);
      break;
    case Level::Bar:
      collectAbsent<xml_elements::kBarTable>(reader_.curBar, absent);
      break;
    case Level::Piece:
      reportNeverStored(element);
      collectAbsent<xml_elements::kPieceTable>(reader_.curPiece, absent);
      break;
    case Level::Cut:  // what it lacks is told of all cuts of a piece together
      reportRepeatedCut(element);
      break;
    case Level::Work:
      collectAbsent<xml_elements::kWorkTable>(reader_.curWork, absent);
      break;
  }
  reportAbsent(level, element, absent);
  keepTrace(level, placeOf(element));
}

void XmlWatcher::cutsEnd(const XMLElement& piece) {
  Absent absent;
  collectAbsent<xml_elements::kCutTable>(reader_.curCut, absent);
  const XMLElement* last = piece.LastChildElement(xml_elements::kCuts);
  reportAbsent(Level::Cut, last == nullptr ? piece : *last, absent);
}

}  // namespace desk::check
