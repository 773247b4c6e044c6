// The walk over an XML job: the one place that knows which elements of a document are taken, in
// which order and into which record.
//
// The plug-in reads unwatched, and pays nothing for what is told here. A tool that explains a job
// watches the same walk: it is told what the walk looked for and took, and decides nothing.
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <stdexcept>

#include "model/assembly.h"
#include "model/key_table.h"
#include "model/number_text.h"
#include "xml/xml_analysis.h"
#include "xml/xml_elements.h"

namespace xml_reading {

using model::Key;
using model::KeyKind;
using model::Level;
using tinyxml2::XMLElement;

/// What a walk tells whoever watches it, in the order in which it happens. This one listens to
/// nothing.
///
/// A walk ends early by an exception: then the element looked for last is the one that raised it.
///
/// Whatever a watcher is handed lives as long as the document. A watcher must not change the
/// reader's records: the walk has yet to use them.
struct Unwatched {
  /// An element of this level is next. The record still holds the values of the one before.
  void begins(Level, const XMLElement& /*element*/) {}

  /// A value was looked for. `child` is the first element of its name, null for none. It may have
  /// no text.
  template <class Record>
  void looksFor(const XMLElement& /*parent*/, const Key<Record>&, const XMLElement* /*child*/) {}

  /// The text of the element that was looked for now stands in the record.
  template <class Record>
  void takes(const XMLElement& /*child*/, const Key<Record>&) {}

  /// All values of the element are taken. Its pieces or works come next.
  void ends(Level, const XMLElement& /*element*/) {}

  /// All cuts of the piece are taken. Its remaining values come next.
  void cutsEnd(const XMLElement& /*piece*/) {}
};

/// Finds the children of an element by name, quickest when they stand in the order in which they
/// are asked for.
///
/// Remembers the run of leading children already consumed. As each name is asked for once, a later
/// name cannot be in that run, so its search starts behind it: one pass over files in the usual
/// order.
class Children {
 public:
  explicit Children(XMLElement& parent) : parent_(parent) {}

  XMLElement& parent() const { return parent_; }

  /// The first child of that name, null where there is none.
  XMLElement* first(const char* name) {
    XMLElement* const found = next(name);
    if (found != nullptr) advance(found);
    return found;
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

/// How many children of that name an element has, so that their list is made at its size.
inline std::size_t countOf(XMLElement& parent, const char* name) {
  std::size_t count = 0;
  Children(parent).forEach(name, [&](XMLElement&) { ++count; });
  return count;
}

/// The text where there must be one. Throws std::logic_error for null: a missing element, an empty
/// one, and one that holds blanks or other elements before its text.
inline const char* requiredText(const char* text) {
  // The words are a contract: what the standard library says of a null text varies by version.
  if (text == nullptr) throw std::logic_error("basic_string::_M_construct null not valid");
  return text;
}

/// Stores the text of an element, null for none. Returns whether it stands in the record now. A
/// number is what its text begins with; throws std::invalid_argument or std::out_of_range ("stod")
/// where that is none or too large. A text that is missing leaves a text field as it is.
template <class Record>
bool store(const char* text, const Key<Record>& key, Record& record) {
  switch (key.kind) {
    case KeyKind::Text:
      if (text == nullptr) return false;
      record.*key.field.text = text;
      return true;
    case KeyKind::Number:
      record.*key.field.number = model::toDouble(requiredText(text));
      return true;
    case KeyKind::Required:
      requiredText(text);
      break;
    case KeyKind::IntegerText:
    case KeyKind::Integer:
    case KeyKind::Flag:
    case KeyKind::Ignored:
      break;
  }
  return false;
}

/// Fills the records of a reader from a document, level by level. Both the reader and the watcher
/// must outlive it. Throws as the reader does.
///
/// The reader's records under construction are the only memory of a walk. An element begins with
/// the values of the one before it, so that a text that is missing carries a value over; when it is
/// complete, a copy goes into the list above it. Where a walk throws, finished bars stay in the
/// job, while the bar, piece and works that were begun are dropped.
template <class Watch>
class Reading {
 public:
  Reading(XmlAnalysis& reader, Watch& watch) : reader_(reader), watch_(watch) {}

  /// The whole job: empties the list of bars, then takes the header and all below it.
  void data(XMLElement& root);

  /// Appends the bars in the root to the job.
  void bars(XMLElement& root);

  /// Appends the pieces of a bar to the bar under construction.
  void pieces(XMLElement& bar);

  /// Takes every cut of a piece; the piece keeps the values of the last one.
  void cuts(Children& piece);

  /// Appends the works of a piece to the piece under construction.
  void works(Children& piece);

 private:
  /// One piece: the values before its cuts, the cuts, the other values and the works.
  void piece(XMLElement& element);

  /// Fills a record from the children of an element, by the rows from `from` up to `to`.
  template <class Record, std::size_t count>
  void values(Children& children, const Key<Record> (&keys)[count], Record& record,
              std::size_t from = 0, std::size_t to = count);

  /// Fills a record from an element whose children lead to no other level.
  template <class Record, std::size_t count>
  void values(XMLElement& parent, const Key<Record> (&keys)[count], Record& record) {
    Children children(parent);
    values(children, keys, record);
  }

  XmlAnalysis& reader_;
  Watch& watch_;
};

template <class Watch>
void Reading<Watch>::data(XMLElement& root) {
  reader_.data.Bar.clear();
  watch_.begins(Level::Header, root);
  // kept: a root without any child leaves the header of the file before
  if (root.FirstChildElement(nullptr) != nullptr) {
    values(root, xml_elements::kHeader, reader_.data);
  }
  watch_.ends(Level::Header, root);
  bars(root);
}

template <class Watch>
void Reading<Watch>::bars(XMLElement& root) {
  model::dropOnThrow(reader_.curBar.piece, [&] {
    reader_.data.Bar.reserve(reader_.data.Bar.size() + countOf(root, xml_elements::kBars));
    Children(root).forEach(xml_elements::kBars, [&](XMLElement& bar) {
      watch_.begins(Level::Bar, bar);
      values(bar, xml_elements::kBar, reader_.curBar);
      watch_.ends(Level::Bar, bar);
      pieces(bar);
      model::appendFinished(reader_.data.Bar, reader_.curBar, &BAR_T::piece);
    });
    return 0;
  });
}

template <class Watch>
void Reading<Watch>::pieces(XMLElement& bar) {
  model::dropOnThrow(reader_.curPiece.work, [&] {
    BAR_T& current = reader_.curBar;
    current.piece.reserve(current.piece.size() + countOf(bar, xml_elements::kPieces));
    Children(bar).forEach(xml_elements::kPieces, [&](XMLElement& element) {
      piece(element);
      model::appendFinished(current.piece, reader_.curPiece, &PIECE_T::work);
    });
    return 0;
  });
}

template <class Watch>
void Reading<Watch>::piece(XMLElement& element) {
  using xml_elements::kPiece;
  constexpr std::size_t beforeCuts = xml_elements::kPieceRowsBeforeCuts;
  Children children(element);
  watch_.begins(Level::Piece, element);
  values(children, kPiece, reader_.curPiece, 0, beforeCuts);
  cuts(children);
  values(children, kPiece, reader_.curPiece, beforeCuts);
  watch_.ends(Level::Piece, element);
  works(children);
}

template <class Watch>
void Reading<Watch>::cuts(Children& piece) {
  piece.forEach(xml_elements::kCuts, [&](XMLElement& element) {
    watch_.begins(Level::Cut, element);
    values(element, xml_elements::kCut, reader_.curCut);
    reader_.curPiece.Length = reader_.curCut.Length;
    reader_.curPiece.sxB = reader_.curCut.sxB;
    reader_.curPiece.dxB = reader_.curCut.dxB;
    watch_.ends(Level::Cut, element);
  });
  watch_.cutsEnd(piece.parent());
}

template <class Watch>
void Reading<Watch>::works(Children& piece) {
  piece.forEach(xml_elements::kWorks, [&](XMLElement& element) {
    watch_.begins(Level::Work, element);
    values(element, xml_elements::kWork, reader_.curWork);
    watch_.ends(Level::Work, element);
    reader_.curPiece.work.push_back(reader_.curWork);
  });
}

template <class Watch>
template <class Record, std::size_t count>
void Reading<Watch>::values(Children& children, const Key<Record> (&keys)[count], Record& record,
                            std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    XMLElement* const child = children.first(keys[i].spelling);
    watch_.looksFor(children.parent(), keys[i], child);
    const char* const text = child == nullptr ? nullptr : child->GetText();
    if (store(text, keys[i], record)) watch_.takes(*child, keys[i]);
  }
}

extern template class Reading<Unwatched>;  // compiled once, with the reader

}  // namespace xml_reading
