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

using model::Key;
using model::KeyKind;

// --- names fixed by the job files ----------------------------------------------------------------

inline constexpr Key<DATA_T> kHeader[] = {
    {"Version", nullptr, KeyKind::Text, &DATA_T::Version},
    {"Generator", nullptr, KeyKind::Text, &DATA_T::Generator},
    {"Unit", nullptr, KeyKind::Text, &DATA_T::Unit},
    {"Name", nullptr, KeyKind::Text, &DATA_T::Name},
};

inline constexpr Key<BAR_T> kBar[] = {
    {"DXF_Name", nullptr, KeyKind::Text, &BAR_T::DXF_Name},
    {"BarName", nullptr, KeyKind::Text, &BAR_T::BarName},
    {"Color", nullptr, KeyKind::Text, &BAR_T::BarColor},
    {"BarNumber", nullptr, KeyKind::Text, &BAR_T::BarNumber},
    {"MaxY", nullptr, KeyKind::Text, &BAR_T::MaxY},
    {"MaxZ", nullptr, KeyKind::Text, &BAR_T::MaxZ},
    {"Length", nullptr, KeyKind::Text, &BAR_T::length},
    {"LeftLength", nullptr, KeyKind::Text, &BAR_T::BarLeftLength},
};

inline constexpr Key<PIECE_CHILD_SECOND_T> kPiece[] = {
    {"PieceNumber", nullptr, KeyKind::Text, &PIECE_T::PieceNumber},
    {"Num", nullptr, KeyKind::Text, &PIECE_T::Num},
    {"BarCode", nullptr, KeyKind::Text, &PIECE_T::BarCode},
    // here the reader takes the piece's cuts
    {"CtrsX", nullptr, KeyKind::Text, &PIECE_T::CtrsX},
    {"CtrsYp", nullptr, KeyKind::Text, &PIECE_T::CtrsYp},
    {"CtrsZ", nullptr, KeyKind::Required, nullptr},
    {"Mirror", nullptr, KeyKind::Text, &PIECE_T::Mirror},
    // kept: the field Extra_Pie holds the holing type, this element's text is never stored
    {"Extra_Pie", nullptr, KeyKind::Ignored, nullptr},
    {"Customer", nullptr, KeyKind::Text, &PIECE_T::Customer},
    {"OrderCode", nullptr, KeyKind::Text, &PIECE_T::order_code},
    {"holing_type", nullptr, KeyKind::Text, &PIECE_T::Extra_Pie},
};

/// How many rows of `kPiece` the reader takes before the piece's cuts. It shows when a read breaks
/// off: what stands before is already carried over to the next job, what stands after is not.
constexpr std::size_t kPieceRowsBeforeCuts = 3;

inline constexpr Key<CUT_T> kCut[] = {
    {"Length", nullptr, KeyKind::Text, &CUT_T::Length},
    {"sxB", nullptr, KeyKind::Text, &CUT_T::sxB},
    {"dxB", nullptr, KeyKind::Text, &CUT_T::dxB},
};

inline constexpr Key<WORK_T> kWork[] = {
    {"Name", nullptr, KeyKind::Text, &WORK_T::Name},
    {"ProfiLav", nullptr, KeyKind::Number, &WORK_T::ProfiLav},
    {"PositionX", nullptr, KeyKind::Number, &WORK_T::PositionX},
    {"PositionY", nullptr, KeyKind::Number, &WORK_T::PositionY},
    {"PositionZ", nullptr, KeyKind::Number, &WORK_T::PositionZ},
};

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
