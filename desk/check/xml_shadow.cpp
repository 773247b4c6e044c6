#include "desk/check/xml_shadow.h"

#include <tinyxml2.h>

#include <cmath>
#include <exception>
#include <stdexcept>

#include "desk/check/rules.h"
#include "model/assembly.h"
#include "xml/xml_elements.h"

namespace desk::check {

namespace {

using model::Key;
using model::KeyKind;
using tinyxml2::XMLElement;

/// Calls read(child, number) for every child element of that name; numbers count from 1.
template <class Read>
void forEachChild(const XMLElement& parent, const char* name, Read&& read) {
  int number = 0;
  for (const XMLElement* child = parent.FirstChildElement(name); child != nullptr;
       child = child->NextSiblingElement(name)) {
    read(*child, ++number);
  }
}

}  // namespace

std::string XmlShadow::read(const XMLElement& root, const Sources& sources, Findings& findings) {
  start(sources, findings);
  TracedJob& job = state_.traced;
  job.place = placeOf(root);
  job.job.Bar.clear();
  job.bars.clear();
  reportAround(*root.GetDocument());
  reportStrangers(root, Level::Header, {});

  Traced<DATA_T> header{std::move(job.job), job.header};
  readElements(root, xml_elements::kHeader, header, Level::Header, {});
  std::vector<Stayed> stayed;
  collectStayed(xml_elements::kHeader, header, Level::Header, {}, stayed);
  job.job = std::move(header.record);
  job.header = header.trace;
  reportAbsent(root, stayed, {});
  try {
    forEachChild(root, xml_elements::kBars, [&](const XMLElement& bar, int number) {
      readBar(bar, {number, 0, 0});
    });
  } catch (const std::logic_error& error) {
    job.bars.resize(job.job.Bar.size());
    state_.bar.record.piece.clear();
    state_.piece.record.work.clear();
    return error.what();
  }
  return {};
}

void XmlShadow::readBar(const XMLElement& bar, const Element& here) {
  reportStrangers(bar, Level::Bar, here);
  readElements(bar, xml_elements::kBar, state_.bar, Level::Bar, here);
  std::vector<Stayed> stayed;
  collectStayed(xml_elements::kBar, state_.bar, Level::Bar, here, stayed);
  reportAbsent(bar, stayed, here);
  state_.traced.bars.push_back({state_.bar.trace, placeOf(bar), {}});
  forEachChild(bar, xml_elements::kPieces, [&](const XMLElement& piece, int number) {
    readPiece(piece, {here.bar, number, 0});
  });
  model::appendFinished(state_.traced.job.Bar, state_.bar.record, &BAR_T::piece);
}

void XmlShadow::readPiece(const XMLElement& piece, const Element& here) {
  using xml_elements::kPiece;
  constexpr std::size_t kBeforeCuts = xml_elements::kPieceRowsBeforeCuts;
  reportStrangers(piece, Level::Piece, here);
  readElements(piece, kPiece, state_.piece, Level::Piece, here, 0, kBeforeCuts);
  readCuts(piece, here);
  readElements(piece, kPiece, state_.piece, Level::Piece, here, kBeforeCuts);
  reportNeverStored(piece, here);
  std::vector<Stayed> stayed;
  collectStayed(kPiece, state_.piece, Level::Piece, here, stayed);
  reportAbsent(piece, stayed, here);

  state_.traced.bars.back().pieces.push_back(
      {state_.piece.trace, state_.cut.trace, {}, placeOf(piece), {}});
  forEachChild(piece, xml_elements::kWorks, [&](const XMLElement& work, int number) {
    readWork(work, {here.bar, here.piece, number});
  });
  model::appendFinished(state_.bar.record.piece, state_.piece.record, &PIECE_T::work);
}

void XmlShadow::readCuts(const XMLElement& piece, const Element& here) {
  forEachChild(piece, xml_elements::kCuts, [&](const XMLElement& cut, int) {
    reportStrangers(cut, Level::Cut, here);
    const Trace<CUT_T> before = state_.cut.trace;
    readElements(cut, xml_elements::kCut, state_.cut, Level::Cut, here);
    reportRepeatedCut(cut, before, here);
  });
  std::vector<Stayed> stayed;
  collectStayed(xml_elements::kCut, state_.cut, Level::Cut, here, stayed);
  const XMLElement* last = piece.LastChildElement(xml_elements::kCuts);
  reportAbsent(last == nullptr ? piece : *last, stayed, here);
  PIECE_T& target = state_.piece.record;
  target.Length = state_.cut.record.Length;
  target.sxB = state_.cut.record.sxB;
  target.dxB = state_.cut.record.dxB;
}

void XmlShadow::readWork(const XMLElement& work, const Element& here) {
  reportStrangers(work, Level::Work, here);
  readElements(work, xml_elements::kWork, state_.work, Level::Work, here);
  std::vector<Stayed> stayed;
  collectStayed(xml_elements::kWork, state_.work, Level::Work, here, stayed);
  reportAbsent(work, stayed, here);
  state_.piece.record.work.push_back(state_.work.record);
  state_.traced.bars.back().pieces.back().works.push_back({state_.work.trace, placeOf(work)});
}

template <class Record, std::size_t count>
void XmlShadow::readElements(const XMLElement& parent, const Key<Record> (&keys)[count],
                             Traced<Record>& current, Level level, const Element& here,
                             std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    const Key<Record>& key = keys[i];
    const XMLElement* child = parent.FirstChildElement(key.spelling);
    if (child != nullptr) reportRepeated(parent, key.spelling, level, here);
    if (key.kind == KeyKind::Required) {
      required(child, key.spelling, parent, here);
    } else if (key.kind == KeyKind::Number) {
      const XMLElement& number = required(child, key.spelling, parent, here);
      current.record.*key.field.number = readNumber(number, here);
      current.trace[fieldOf(key)] = state_.traced.add(placeOf(number), here);
    } else if (child != nullptr) {
      readElement(*child, key, current, here);
    }
  }
}

template <class Record>
void XmlShadow::readElement(const XMLElement& child, const Key<Record>& key,
                            Traced<Record>& current, const Element& here) {
  if (key.kind != KeyKind::Text || child.GetText() == nullptr) return;
  current.record.*key.field.text = child.GetText();
  current.trace[fieldOf(key)] = state_.traced.add(placeOf(child), here);
}

const XMLElement& XmlShadow::required(const XMLElement* child, const std::string& name,
                                      const XMLElement& parent, const Element& here) {
  if (child != nullptr && child->GetText() != nullptr) return *child;
  const char* const kThrown = "basic_string::_M_construct null not valid";
  report(rules::kMissingElement, Severity::Error, placeOf(child == nullptr ? parent : *child),
         describe(here) + " has no text in \"" + name + "\": loading raises \"" + kThrown +
             "\" and nothing from here on is read",
         here, name);
  throw std::logic_error(kThrown);
}

double XmlShadow::readNumber(const XMLElement& element, const Element& here) {
  const std::string text = element.GetText();
  const std::string name = element.Name();
  std::size_t end = 0;
  double number = 0.0;
  try {
    number = std::stod(text, &end);
  } catch (const std::logic_error& error) {
    report(rules::kRaises, Severity::Error, placeOf(element),
           "\"" + name + "\" is " + quoted(text) + ", no number: loading raises \"" + error.what() +
               "\" and nothing from here on is read",
           here, name);
    throw;
  }
  // "nan" and "inf" convert as well.
  const bool isFinite = std::isfinite(number);
  if (!isFinite || text.find_first_not_of(" \t\r\n", end) != std::string::npos) {
    report(rules::kNotANumber, isFinite ? Severity::Warning : Severity::Error, placeOf(element),
           "\"" + name + "\" is " + quoted(text) + " and read as " + shortestText(number), here,
           name);
  }
  return number;
}

}  // namespace desk::check
