// The walk over a JSON job: the one place that knows which values of a document are taken, in which
// order and into which record.
//
// The plug-in reads unwatched, and pays nothing for what is told here. A tool that explains a job
// watches the same walk: it is told what the walk took and passed over, and decides nothing.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>

#include "json/json_analysis.h"
#include "json/json_keys.h"
#include "json/json_values.h"
#include "model/assembly.h"
#include "model/key_table.h"

namespace json_reading {

using json_keys::LabelKey;
using model::Key;
using model::Level;

/// What the readers answer, which is what scripts get as errorCode. A code below 0 passes upwards
/// unchanged: the caller of the file gets the code of the innermost level that failed.
enum ResultCode {
  kDone = 0,
  kNoFile = -2,    ///< the host gave no document; the job is untouched
  kNoHeader = -3,  ///< the root declares no version "1.0" under either spelling
  kNoBar = -4,     ///< the version handed to the bars is another text
  kNoPiece = -5,   ///< the same for the pieces of a bar
  kNoWork = -6     ///< the same for the works of a piece
};

/// What a walk tells whoever watches it, in the order in which it happens. This one listens to
/// nothing and lets a failing level write its line, as on a panel.
///
/// An array may hold values that are no objects: they begin and end like any other element and have
/// no keys in between.
///
/// Whatever a watcher is handed lives as long as the document. A watcher must not change the
/// reader's records: the walk has yet to use them.
struct Unwatched {
  /// An element of this level is next. The record still holds the values of the one before.
  void begins(Level, const Json::Value& /*element*/) {}

  /// A key was looked for. `taken` is the value that now stands in the record, null for none: then
  /// the field keeps what it held.
  template <class Record>
  void key(const Json::Value& /*object*/, const Key<Record>&, const Json::Value* /*taken*/) {}

  /// The same for a label field.
  void label(const Json::Value& /*piece*/, const LabelKey&, const Json::Value* /*taken*/) {}

  /// The piece has no text under the first label key, so none of its label fields is looked at.
  void labelsSkipped(const Json::Value& /*piece*/) {}

  /// The cut's right angle was "135" and is now "45".
  void rightAngle135() {}

  /// All keys of the element are taken. Its pieces or works come next.
  void ends(Level, const Json::Value& /*element*/) {}

  /// The key that leads from the header to the bars was looked for, in both spellings.
  void bars(const Json::Value& /*root*/, const Json::Value* /*taken*/) {}

  /// A key that leads from one level to the next was looked for. `taken` is the array, or the cut
  /// object, that is read next; null where there is none.
  void leads(Level, const Json::Value& /*object*/, const char* /*key*/,
             const Json::Value* /*taken*/) {}

  /// A level fails, named as on standard output: "analysis piece". Returns `code`.
  int failed(const char* level, int code);
};

/// A test of the library, such as &Json::Value::isArray.
using TypeTest = bool (Json::Value::*)() const;

/// The value of a key, null where it is absent or fails the test, or where `object` is no object.
inline const Json::Value* child(const Json::Value& object, const char* key, TypeTest isWanted) {
  if (!object.isObject()) return nullptr;
  const Json::Value& value = object[key];
  return (value.*isWanted)() ? &value : nullptr;
}

/// Whether either spelling of the version key holds the text "1.0". No other value is equal to it,
/// neither the number 1.0 nor "1.00".
inline bool declaresVersion1(const Json::Value& root) {
  if (!root.isObject()) return false;
  const Json::Value version1(json_keys::kVersion);
  return root[json_keys::kVersionKey.spelling] == version1 ||
         root[json_keys::kVersionKey.secondSpelling] == version1;
}

/// How many elements an array has. Counted by iterators, so that the plug-in needs no further
/// function of the library.
inline std::size_t sizeOf(const Json::Value& array) {
  std::size_t size = 0;
  for (auto element = array.begin(); element != array.end(); ++element) ++size;
  return size;
}

/// Whether the label fields of a piece are looked at: the first one has a text under either
/// spelling.
inline bool hasLabelFields(const Json::Value& piece) {
  const LabelKey& first = json_keys::kLabelFields[0];
  return child(piece, first.spelling, &Json::Value::isString) != nullptr ||
         child(piece, first.secondSpelling, &Json::Value::isString) != nullptr;
}

/// Fills the records of a reader from a document, level by level. The levels answer as the reader's
/// public members of the same subject do. Both the reader and the watcher must outlive it.
///
/// The reader's records under construction are the only memory of a walk. An element begins with
/// the values of the one before it, so that a key that is missing carries a value over; when it is
/// complete, a copy goes into the list above it. Where a walk throws, finished bars stay in the
/// job, while the bar, piece and works that were begun are dropped.
template <class Watch>
class Reading {
 public:
  Reading(JsonAnalysis& reader, Watch& watch) : reader_(reader), watch_(watch) {}

  /// The whole job: empties the list of bars, then takes the header and all below it.
  int data(const Json::Value& root);

  /// Appends the bars of an array to the job.
  int bars(const Json::Value& bars, const std::string& version);

  /// Appends the pieces of an array to the bar under construction.
  int pieces(const Json::Value& pieces, const std::string& version);

  /// Takes the label fields of a piece. Without effect for another version.
  int fields(const Json::Value& piece, const std::string& version);

  /// Takes the cut of a piece. Without effect for another version.
  /// @param cut the cut object, null where there is none: then the cut before is looked at again
  int cut(const Json::Value* cut, const std::string& version);

  /// Appends the works of an array to the piece under construction.
  int works(const Json::Value& works, const std::string& version);

 private:
  /// One bar with its pieces. It joins the job only when all of them could be read.
  int bar(const Json::Value& bar);

  /// One piece: its keys, label fields, cut and works, in this order.
  int piece(const Json::Value& piece);

  template <class Record, std::size_t count>
  void keys(const Json::Value& object, const Key<Record> (&keys)[count], Record& record);

  JsonAnalysis& reader_;
  Watch& watch_;
};

template <class Watch>
int Reading<Watch>::data(const Json::Value& root) {
  reader_.data.Bar.clear();
  watch_.begins(Level::Header, root);
  if (!declaresVersion1(root)) return kNoHeader;
  keys(root, json_keys::kHeader, reader_.data);
  watch_.ends(Level::Header, root);
  // kept: the test above looks at both spellings, the version handed down is the one just stored
  const Json::Value* found = child(root, json_keys::kBars, &Json::Value::isArray);
  if (found == nullptr) found = child(root, json_keys::kBarsSecond, &Json::Value::isArray);
  watch_.bars(root, found);
  if (found == nullptr) return kDone;
  const int code = bars(*found, reader_.data.Version);
  return code >= 0 ? kDone : watch_.failed("analysis bar", code);
}

template <class Watch>
int Reading<Watch>::bars(const Json::Value& bars, const std::string& version) {
  if (version != json_keys::kVersion) return kNoBar;
  return model::dropOnThrow(reader_.curBar.piece, [&] {
    reader_.data.Bar.reserve(reader_.data.Bar.size() + sizeOf(bars));
    for (const Json::Value& element : bars) {
      if (const int code = bar(element); code < 0) return code;
    }
    return int{kDone};
  });
}

template <class Watch>
int Reading<Watch>::bar(const Json::Value& bar) {
  watch_.begins(Level::Bar, bar);
  keys(bar, json_keys::kBar, reader_.curBar);
  watch_.ends(Level::Bar, bar);

  const Json::Value* found = child(bar, json_keys::kPieces, &Json::Value::isArray);
  watch_.leads(Level::Bar, bar, json_keys::kPieces, found);
  if (found != nullptr) {
    const int code = pieces(*found, reader_.data.Version);
    if (code < 0) return watch_.failed("analysis piece", code);
  }
  model::appendFinished(reader_.data.Bar, reader_.curBar, &BAR_T::piece);
  return kDone;
}

template <class Watch>
int Reading<Watch>::pieces(const Json::Value& pieces, const std::string& version) {
  if (version != json_keys::kVersion) return kNoPiece;
  return model::dropOnThrow(reader_.curPiece.work, [&] {
    reader_.curBar.piece.reserve(reader_.curBar.piece.size() + sizeOf(pieces));
    for (const Json::Value& element : pieces) {
      if (const int code = piece(element); code < 0) return code;
    }
    return int{kDone};
  });
}

template <class Watch>
int Reading<Watch>::piece(const Json::Value& piece) {
  PIECE_CHILD_SECOND_T& current = reader_.curPiece;
  watch_.begins(Level::Piece, piece);
  keys(piece, json_keys::kPiece, current);

  if (hasLabelFields(piece)) {
    const int code = fields(piece, reader_.data.Version);
    if (code < 0) return watch_.failed("analysis field", code);
    current.Fields = reader_.curField;
  } else {
    watch_.labelsSkipped(piece);
  }

  const Json::Value* found = child(piece, json_keys::kCutOfPiece, &Json::Value::isObject);
  watch_.leads(Level::Piece, piece, json_keys::kCutOfPiece, found);
  if (found != nullptr) {
    const int code = cut(found, reader_.data.Version);
    if (code < 0) return watch_.failed("analysis cut", code);
  }
  // kept: a piece without a cut carries the cut of the piece before it
  current.Length = reader_.curCut.Length;
  current.sxB = reader_.curCut.sxB;
  current.dxB = reader_.curCut.dxB;
  watch_.ends(Level::Piece, piece);

  found = child(piece, json_keys::kWorks, &Json::Value::isArray);
  watch_.leads(Level::Piece, piece, json_keys::kWorks, found);
  if (found != nullptr) {
    const int code = works(*found, reader_.data.Version);
    if (code < 0) return watch_.failed("analysis work", code);
  }
  model::appendFinished(reader_.curBar.piece, current, &PIECE_T::work);
  return kDone;
}

template <class Watch>
int Reading<Watch>::fields(const Json::Value& piece, const std::string& version) {
  if (version != json_keys::kVersion || !piece.isObject()) return kDone;
  FIELD_T& fields = reader_.curField;
  for (const LabelKey& key : json_keys::kLabelFields) {
    const Json::Value* taken = nullptr;
    if (const Json::Value& text = piece[key.spelling]; text.isString()) {
      fields.*key.field = (taken = &text)->asString();
    } else if (const Json::Value& second = piece[key.secondSpelling]; second.isString()) {
      fields.*key.secondField = (taken = &second)->asString();
    }
    watch_.label(piece, key, taken);
  }
  return kDone;
}

template <class Watch>
int Reading<Watch>::cut(const Json::Value* cut, const std::string& version) {
  if (version != json_keys::kVersion) return kDone;
  CUT_T& current = reader_.curCut;
  if (cut != nullptr) {
    watch_.begins(Level::Cut, *cut);
    keys(*cut, json_keys::kCut, current);
    watch_.ends(Level::Cut, *cut);
  }
  // kept: the saw's right head counts a mitre of 135 degrees as 45
  if (current.dxB == "135") {
    current.dxB = "45";
    watch_.rightAngle135();
  }
  return kDone;
}

template <class Watch>
int Reading<Watch>::works(const Json::Value& works, const std::string& version) {
  if (version != json_keys::kVersion) return kNoWork;
  for (const Json::Value& work : works) {
    watch_.begins(Level::Work, work);
    keys(work, json_keys::kWork, reader_.curWork);
    watch_.ends(Level::Work, work);
    reader_.curPiece.work.push_back(reader_.curWork);
  }
  return kDone;
}

/// Fills a record from the keys of an object, in the order of the table. The second spelling is
/// asked for only where the first is absent or of another kind. What is no object has no keys.
template <class Watch>
template <class Record, std::size_t count>
void Reading<Watch>::keys(const Json::Value& object, const Key<Record> (&keys)[count],
                          Record& record) {
  if (!object.isObject()) return;
  for (const Key<Record>& key : keys) {
    const Json::Value* taken = nullptr;
    if (const Json::Value& value = object[key.spelling]; json_keys::isOfKind(value, key.kind)) {
      json_keys::store(*(taken = &value), key, record);
    } else if (key.secondSpelling != nullptr) {
      const Json::Value& second = object[key.secondSpelling];
      if (json_keys::isOfKind(second, key.kind)) json_keys::store(*(taken = &second), key, record);
    }
    watch_.key(object, key, taken);
  }
}

extern template class Reading<Unwatched>;  // compiled once, with the reader

}  // namespace json_reading
