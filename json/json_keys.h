// The keys of a JSON job file: per level, which key fills which field of which record.
//
// A key counts only where its value has the kind of its row; otherwise it is as good as absent and
// the field keeps what it holds. Keys that stand in no table are ignored. The rows stand in the
// order in which the reader takes them.
#pragma once

#include <iterator>
#include <string>

#include "model/job_records.h"
#include "model/key_table.h"

namespace json_keys {

using model::Key;
using model::KeyKind;

// --- names fixed by the job files ----------------------------------------------------------------

/// The one version that a job may declare, as a text.
constexpr char kVersion[] = "1.0";

inline constexpr Key<DATA_T> kHeader[] = {
    {"success", nullptr, KeyKind::Flag, &DATA_T::success},
    {"code", nullptr, KeyKind::Text, &DATA_T::code},
    {"message", nullptr, KeyKind::Text, &DATA_T::message},
    {"Version", "version", KeyKind::Text, &DATA_T::Version},
    {"Generator", "generator", KeyKind::Text, &DATA_T::Generator},
    {"Unit", "unit", KeyKind::Text, &DATA_T::Unit},
    {"Name", "name", KeyKind::Text, &DATA_T::Name},
};

/// The row that decides whether a job is read at all.
inline constexpr const Key<DATA_T>& kVersionKey = kHeader[3];
static_assert(kVersionKey.field.text == &DATA_T::Version);

inline constexpr Key<BAR_T> kBar[] = {
    {"DXF_Name", "dxF_Name", KeyKind::Text, &BAR_T::DXF_Name},
    {"BarNumber", "barNumber", KeyKind::IntegerText, &BAR_T::BarNumber},
    {"MaxY", "maxY", KeyKind::IntegerText, &BAR_T::MaxY},
    {"MaxZ", "maxZ", KeyKind::IntegerText, &BAR_T::MaxZ},
    {"length", nullptr, KeyKind::IntegerText, &BAR_T::length},
    {"BarName", "barName", KeyKind::Text, &BAR_T::BarName},
    {"BarColor", "barColor", KeyKind::Text, &BAR_T::BarColor},
    {"Sortingcode", "sortingcode", KeyKind::Text, &BAR_T::Sortingcode},
    {"BarLeftLength", "barLeftLength", KeyKind::IntegerText, &BAR_T::BarLeftLength},
    {"BarType", "barType", KeyKind::IntegerText, &BAR_T::BarType},
    {"BarCad", "barCad", KeyKind::Text, &BAR_T::BarCad},
};

inline constexpr Key<PIECE_CHILD_SECOND_T> kPiece[] = {
    {"PieceNumber", "pieceNumber", KeyKind::IntegerText, &PIECE_T::PieceNumber},
    {"Num", "num", KeyKind::IntegerText, &PIECE_T::Num},
    {"Over_status", "over_status", KeyKind::IntegerText, &PIECE_T::Over_status},
    {"BarCode", "barCode", KeyKind::Text, &PIECE_T::BarCode},
    {"Customer", "customer", KeyKind::Text, &PIECE_T::Customer},
    {"Cc_code", "cc_code", KeyKind::Text, &PIECE_T::Cc_code},
    {"order_code", nullptr, KeyKind::Text, &PIECE_T::order_code},
    {"plan_code", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::plan_code},
    {"Buyer", "buyer", KeyKind::Text, &PIECE_T::Buyer},
    {"BuyAddress", "buyAddress", KeyKind::Text, &PIECE_T::BuyAddress},
    {"CarCode", "carCode", KeyKind::Text, &PIECE_CHILD_SECOND_T::CarCode},
    {"CtrsX", "ctrsX", KeyKind::Text, &PIECE_T::CtrsX},
    {"CtrsYp", "ctrsYp", KeyKind::Text, &PIECE_T::CtrsYp},
    {"CtrsYm", "ctrsYm", KeyKind::Text, &PIECE_T::CtrsYm},
    {"Mirror", "mirror", KeyKind::Text, &PIECE_T::Mirror},
    {"Production_demand", "production_demand", KeyKind::Text,
     &PIECE_CHILD_SECOND_T::Production_demand},
    {"Extra_Pie", "extra_Pie", KeyKind::Text, &PIECE_T::Extra_Pie},
    {"cut_angle_convert", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::cut_angle_convert},
    // kept: "machin" is what some planning systems write
    {"machine", "machin", KeyKind::Text, &PIECE_CHILD_SECOND_T::machine},
    {"allow_min_cut", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::allow_min_cut},
    {"time_car", nullptr, KeyKind::Text, &PIECE_T::time_car},
    {"mark", nullptr, KeyKind::Text, &PIECE_T::mark},
    {"boshan_value", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::boshan_value},
    {"shashan_value", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::shashan_value},
    {"project_addr", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::project_addr},
};

/// A label field: its two spellings fill different fields. Label fields are keys of the piece.
struct LabelKey {
  const char* spelling;
  std::string FIELD_T::*field;
  const char* secondSpelling;  ///< taken when the first is absent or no text
  std::string FIELD_T::*secondField;
};

constexpr bool fillSameField(const LabelKey& a, const LabelKey& b) {
  return a.field == b.field;
}

// kept: lower-case label keys land in Field1, Field11 or Field15; label layouts in the field rely
// on it. A piece without a text under either spelling of the first row has no label fields at all.
inline constexpr LabelKey kLabelFields[] = {
    {"Field1", &FIELD_T::Field1, "field1", &FIELD_T::Field1},
    {"Field2", &FIELD_T::Field2, "field2", &FIELD_T::Field1},
    {"Field3", &FIELD_T::Field3, "field3", &FIELD_T::Field1},
    {"Field4", &FIELD_T::Field4, "field4", &FIELD_T::Field1},
    {"Field5", &FIELD_T::Field5, "field5", &FIELD_T::Field1},
    {"Field6", &FIELD_T::Field6, "field6", &FIELD_T::Field1},
    {"Field7", &FIELD_T::Field7, "field7", &FIELD_T::Field1},
    {"Field8", &FIELD_T::Field8, "field8", &FIELD_T::Field1},
    {"Field9", &FIELD_T::Field9, "field9", &FIELD_T::Field1},
    {"Field10", &FIELD_T::Field10, "field10", &FIELD_T::Field1},
    {"Field11", &FIELD_T::Field11, "field11", &FIELD_T::Field11},
    {"Field12", &FIELD_T::Field12, "field12", &FIELD_T::Field11},
    {"Field13", &FIELD_T::Field13, "field13", &FIELD_T::Field11},
    {"Field14", &FIELD_T::Field14, "field14", &FIELD_T::Field11},
    {"Field15", &FIELD_T::Field15, "field15", &FIELD_T::Field15},
    {"Field16", &FIELD_T::Field16, "field16", &FIELD_T::Field15},
    {"Field17", &FIELD_T::Field17, "field17", &FIELD_T::Field15},
    {"Field18", &FIELD_T::Field18, "field18", &FIELD_T::Field15},
    {"Field19", &FIELD_T::Field19, "field19", &FIELD_T::Field15},
};

inline constexpr Key<CUT_T> kCut[] = {
    {"Length", "length", KeyKind::Text, &CUT_T::Length},
    {"sxB", nullptr, KeyKind::Text, &CUT_T::sxB},
    {"dxB", nullptr, KeyKind::Text, &CUT_T::dxB},
};

inline constexpr Key<WORK_T> kWork[] = {
    {"Name", "name", KeyKind::Text, &WORK_T::Name},
    {"ProfiLav", "profiLav", KeyKind::Integer, &WORK_T::ProfiLav},
    {"PositionX", "positionX", KeyKind::Number, &WORK_T::PositionX},
    {"PositionY", "positionY", KeyKind::Number, &WORK_T::PositionY},
    {"PositionZ", "positionZ", KeyKind::Number, &WORK_T::PositionZ},
};

/// The keys that lead from one level to the next.
constexpr char kBars[] = "Bar";        ///< header: array of bars
constexpr char kBarsSecond[] = "bar";  ///< taken when the first is no array
constexpr char kPieces[] = "piece";    ///< bar: array of pieces
constexpr char kCutOfPiece[] = "cut";  ///< piece: the cut object
constexpr char kWorks[] = "work";      ///< piece: array of works

static_assert(model::spellingsAreUnique(kHeader) && model::spellingsAreUnique(kBar) &&
                  model::spellingsAreUnique(kPiece) && model::spellingsAreUnique(kLabelFields) &&
                  model::spellingsAreUnique(kCut) && model::spellingsAreUnique(kWork),
              "a key must fill one field");
static_assert(model::fieldsAreUnique(kHeader) && model::fieldsAreUnique(kBar) &&
                  model::fieldsAreUnique(kPiece) && model::fieldsAreUnique(kLabelFields) &&
                  model::fieldsAreUnique(kCut) && model::fieldsAreUnique(kWork),
              "a field must have one key");
static_assert(sizeof(DATA_T) - sizeof(DATA_T::Bar) - alignof(DATA_T) ==
                  (std::size(kHeader) - 1) * sizeof(std::string),
              "every text of the header and its flag have a key");
static_assert(sizeof(WORK_T) - sizeof(WORK_T::Name) == (std::size(kWork) - 1) * sizeof(double),
              "every number of a work has a key");
static_assert(sizeof(FIELD_T) == std::size(kLabelFields) * sizeof(std::string),
              "every label field has a key");
static_assert(sizeof(CUT_T) == std::size(kCut) * sizeof(std::string),
              "every text of the cut has a key");
static_assert(sizeof(BAR_T) - sizeof(BAR_T::piece) == std::size(kBar) * sizeof(std::string),
              "every text of a bar has a key");
static_assert(sizeof(PIECE_CHILD_SECOND_T) - sizeof(PIECE_T::work) - sizeof(FIELD_T) -
                      sizeof(CUT_T) ==
                  std::size(kPiece) * sizeof(std::string),
              "every text of a piece has a key");

}  // namespace json_keys
