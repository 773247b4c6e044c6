// The elements of an XML job file: per level, which child element fills which field of which
// record.
//
// Every value is the text of the first child of that name; there is one spelling each. A text that
// is missing or empty leaves the field as it is. Elements that stand in no table are ignored. The
// rows stand in the order in which the reader takes them.
#pragma once

#include <cstddef>

#include "model/job_records.h"
#include "model/key_table.h"

namespace xml_elements {

using model::FieldOf;
using model::Key;
using model::KeyKind;
using model::Need;
using model::Note;
using model::TextForm;

/// An element that holds a value. What its field is for stands at the JSON key that fills the same
/// one; an element without such a key has words of its own.
template <class Record>
struct Element {
  constexpr Element(const char* name, KeyKind kind, FieldOf<Record> field)
      : key{name, nullptr, kind, field}, note{} {}
  constexpr Element(const char* name, KeyKind kind, FieldOf<Record> field, Need need, TextForm form,
                    const char* text)
      : key{name, nullptr, kind, field}, note{need, form, text, nullptr} {}

  Key<Record> key;
  Note note;  ///< without text: that of the JSON key
};

// --- names fixed by the job files ----------------------------------------------------------------

// Each table stands here twice: `...Rows` for the desk, which explains elements to people, and as
// `kHeader`, `kBar` and so on for the readers. All values are kept as the text that they are, but
// for the numbers of a work.

/// The root of the document, whatever its name.
inline constexpr Element<DATA_T> kHeaderRows[] = {
    {"Version", KeyKind::Text, &DATA_T::Version},
    {"Generator", KeyKind::Text, &DATA_T::Generator},
    {"Unit", KeyKind::Text, &DATA_T::Unit},
    {"Name", KeyKind::Text, &DATA_T::Name},
};
inline constexpr auto kHeaderTable = model::keysOf(kHeaderRows);
inline constexpr const auto& kHeader = kHeaderTable.keys;

/// A raw bar, with the profile that it is made of.
inline constexpr Element<BAR_T> kBarRows[] = {
    {"DXF_Name", KeyKind::Text, &BAR_T::DXF_Name},
    {"BarName", KeyKind::Text, &BAR_T::BarName},
    {"Color", KeyKind::Text, &BAR_T::BarColor},
    {"BarNumber", KeyKind::Text, &BAR_T::BarNumber},
    {"MaxY", KeyKind::Text, &BAR_T::MaxY},
    {"MaxZ", KeyKind::Text, &BAR_T::MaxZ},
    {"Length", KeyKind::Text, &BAR_T::length},
    {"LeftLength", KeyKind::Text, &BAR_T::BarLeftLength},
};
inline constexpr auto kBarTable = model::keysOf(kBarRows);
inline constexpr const auto& kBar = kBarTable.keys;

/// A piece that is cut from its bar. Its cuts are taken in the middle of these rows.
inline constexpr Element<PIECE_CHILD_SECOND_T> kPieceRows[] = {
    {"PieceNumber", KeyKind::Text, &PIECE_T::PieceNumber},
    {"Num", KeyKind::Text, &PIECE_T::Num},
    {"BarCode", KeyKind::Text, &PIECE_T::BarCode},
    // here the reader takes the piece's cuts
    {"CtrsX", KeyKind::Text, &PIECE_T::CtrsX},
    {"CtrsYp", KeyKind::Text, &PIECE_T::CtrsYp},
    {"CtrsZ", KeyKind::Required, nullptr, Need::Always, TextForm::Any,
     "Centre in Z. Must hold text, which is read and dropped."},
    {"Mirror", KeyKind::Text, &PIECE_T::Mirror},
    // kept: the field Extra_Pie holds the holing type, this element's text is never stored
    {"Extra_Pie", KeyKind::Ignored, nullptr, Need::Optional, TextForm::Any,
     "Read and never stored. Write holing_type instead."},
    {"Customer", KeyKind::Text, &PIECE_T::Customer},
    {"OrderCode", KeyKind::Text, &PIECE_T::order_code},
    {"holing_type", KeyKind::Text, &PIECE_T::Extra_Pie},
};
inline constexpr auto kPieceTable = model::keysOf(kPieceRows);
inline constexpr const auto& kPiece = kPieceTable.keys;

/// How many rows of `kPiece` the reader takes before the piece's cuts. It shows when a read breaks
/// off: what stands before is already carried over to the next job, what stands after is not.
constexpr std::size_t kPieceRowsBeforeCuts = 3;

/// A cut of a piece, whose values the piece takes over. Angles are kept as they stand: 135 is no 45
/// here.
inline constexpr Element<CUT_T> kCutRows[] = {
    {"Length", KeyKind::Text, &CUT_T::Length},
    {"sxB", KeyKind::Text, &CUT_T::sxB},
    {"dxB", KeyKind::Text, &CUT_T::dxB},
};
inline constexpr auto kCutTable = model::keysOf(kCutRows);
inline constexpr const auto& kCut = kCutTable.keys;

/// One machining work. Its numbers must have a text that begins with a number: "12.5mm" is 12.5.
inline constexpr Element<WORK_T> kWorkRows[] = {
    {"Name", KeyKind::Text, &WORK_T::Name},
    {"ProfiLav", KeyKind::Number, &WORK_T::ProfiLav},
    {"PositionX", KeyKind::Number, &WORK_T::PositionX},
    {"PositionY", KeyKind::Number, &WORK_T::PositionY},
    {"PositionZ", KeyKind::Number, &WORK_T::PositionZ},
};
inline constexpr auto kWorkTable = model::keysOf(kWorkRows);
inline constexpr const auto& kWork = kWorkTable.keys;

/// The elements that repeat, each of which leads to the next level.
constexpr char kBars[] = "Bar";      ///< in the root
constexpr char kPieces[] = "Piece";  ///< in a bar
constexpr char kCuts[] = "Cut";      ///< in a piece; the last one wins
constexpr char kWorks[] = "Work";    ///< in a piece

static_assert(model::spellingsAreUnique(kHeader) && model::spellingsAreUnique(kBar) &&
                  model::spellingsAreUnique(kPiece) && model::spellingsAreUnique(kCut) &&
                  model::spellingsAreUnique(kWork),
              "an element must fill one field");
static_assert(model::fieldsAreUnique(kHeader) && model::fieldsAreUnique(kBar) &&
                  model::fieldsAreUnique(kPiece) && model::fieldsAreUnique(kCut) &&
                  model::fieldsAreUnique(kWork),
              "a field must have one element");

}  // namespace xml_elements
