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

using model::DescribedKey;
using model::Key;
using model::KeyKind;
using model::Need;
using model::TextForm;

// --- names fixed by the job files ----------------------------------------------------------------

/// The one version that a job may declare, as a text.
constexpr char kVersion[] = "1.0";

// Each table stands here twice: `...Rows` with words for people, which the desk uses, and without
// them as `kHeader`, `kBar` and so on, which the readers loop over. Lengths are in mm
// unless the job's "Unit" says otherwise; nothing is checked or converted.

/// The root of the document.
inline constexpr DescribedKey<DATA_T> kHeaderRows[] = {
    {"success", nullptr, KeyKind::Flag, &DATA_T::success, Need::Always, TextForm::Any,
     "Whether the planning system made the job without error."},
    {"code", nullptr, KeyKind::Text, &DATA_T::code, Need::Always, TextForm::Any,
     "The planning system's own result code."},
    {"message", nullptr, KeyKind::Text, &DATA_T::message, Need::Always, TextForm::Any,
     "The planning system's own message."},
    {"Version", "version", KeyKind::Text, &DATA_T::Version, Need::Always, TextForm::Any,
     "Version of the job format."},
    {"Generator", "generator", KeyKind::Text, &DATA_T::Generator, Need::Always, TextForm::Any,
     "The program that wrote the job."},
    {"Unit", "unit", KeyKind::Text, &DATA_T::Unit, Need::Always, TextForm::Unit,
     "Unit of the lengths. Nothing is converted."},
    {"Name", "name", KeyKind::Text, &DATA_T::Name, Need::Always, TextForm::Any, "Name of the job."},
};
inline constexpr auto kHeaderTable = model::keysOf(kHeaderRows);
inline constexpr const auto& kHeader = kHeaderTable.keys;

/// The row that decides whether a job is read at all.
inline constexpr const Key<DATA_T>& kVersionKey = kHeader[3];
static_assert(kVersionKey.field.text == &DATA_T::Version);

/// A raw bar, with the profile that it is made of. Integers are kept as decimal text.
inline constexpr DescribedKey<BAR_T> kBarRows[] = {
    {"DXF_Name", "dxF_Name", KeyKind::Text, &BAR_T::DXF_Name, Need::Always, TextForm::Any,
     "Drawing of the profile's cross section."},
    {"BarNumber", "barNumber", KeyKind::IntegerText, &BAR_T::BarNumber, Need::Always,
     TextForm::Count, "Number of the bar, by which get_cut finds it."},
    {"MaxY", "maxY", KeyKind::IntegerText, &BAR_T::MaxY, Need::Always, TextForm::Size,
     "Width of the profile across the bar, mm."},
    {"MaxZ", "maxZ", KeyKind::IntegerText, &BAR_T::MaxZ, Need::Always, TextForm::Size,
     "Height of the profile, mm."},
    {"length", nullptr, KeyKind::IntegerText, &BAR_T::length, Need::Always, TextForm::Size,
     "Length of the raw bar, mm."},
    {"BarName", "barName", KeyKind::Text, &BAR_T::BarName, Need::Always, TextForm::Any,
     "Name of the bar."},
    {"BarColor", "barColor", KeyKind::Text, &BAR_T::BarColor, Need::Always, TextForm::Any,
     "Colour of the bar."},
    {"Sortingcode", "sortingcode", KeyKind::Text, &BAR_T::Sortingcode, Need::Always, TextForm::Any,
     "Code by which bars are sorted."},
    {"BarLeftLength", "barLeftLength", KeyKind::IntegerText, &BAR_T::BarLeftLength, Need::Always,
     TextForm::Measure, "What is left over of the bar after its last cut, mm."},
    {"BarType", "barType", KeyKind::IntegerText, &BAR_T::BarType, Need::Always, TextForm::Any,
     "Kind of the bar, a number of the planning system."},
    {"BarCad", "barCad", KeyKind::Text, &BAR_T::BarCad, Need::Always, TextForm::Any,
     "Drawing file of the bar."},
};
inline constexpr auto kBarTable = model::keysOf(kBarRows);
inline constexpr const auto& kBar = kBarTable.keys;

/// A piece that is cut from its bar. Most of its texts are for labels and scripts: the reader uses
/// none of them.
inline constexpr DescribedKey<PIECE_CHILD_SECOND_T> kPieceRows[] = {
    {"PieceNumber", "pieceNumber", KeyKind::IntegerText, &PIECE_T::PieceNumber, Need::Always,
     TextForm::Count, "Number of the piece within its bar.",
     "With the number of the bar it finds the barcode for get_cut."},
    {"Num", "num", KeyKind::IntegerText, &PIECE_T::Num, Need::Always, TextForm::Count,
     "How many of the piece."},
    {"Over_status", "over_status", KeyKind::IntegerText, &PIECE_T::Over_status, Need::Always,
     TextForm::Any, "How far the piece has come, as planned."},
    {"BarCode", "barCode", KeyKind::Text, &PIECE_T::BarCode, Need::Always, TextForm::Any,
     "Barcode on the piece's label, by which get_work and get_Dimensions find it."},
    {"Customer", "customer", KeyKind::Text, &PIECE_T::Customer, Need::Always, TextForm::Any,
     "Customer who ordered the window or door."},
    {"Cc_code", "cc_code", KeyKind::Text, &PIECE_T::Cc_code, Need::Always, TextForm::Any,
     "Code of the window or door in its order."},
    {"order_code", nullptr, KeyKind::Text, &PIECE_T::order_code, Need::Always, TextForm::Any,
     "Code of the order."},
    {"plan_code", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::plan_code, Need::Always,
     TextForm::Any, "Code of the production plan."},
    {"Buyer", "buyer", KeyKind::Text, &PIECE_T::Buyer, Need::Always, TextForm::Any,
     "Who buys from the factory."},
    {"BuyAddress", "buyAddress", KeyKind::Text, &PIECE_T::BuyAddress, Need::Always, TextForm::Any,
     "Address of the buyer."},
    {"CarCode", "carCode", KeyKind::Text, &PIECE_CHILD_SECOND_T::CarCode, Need::Always,
     TextForm::Any, "Code of the trolley for the piece."},
    {"CtrsX", "ctrsX", KeyKind::Text, &PIECE_T::CtrsX, Need::Always, TextForm::Any,
     "Centre in X, as the planning system has it."},
    {"CtrsYp", "ctrsYp", KeyKind::Text, &PIECE_T::CtrsYp, Need::Always, TextForm::Any,
     "Centre in Y plus, as the planning system has it."},
    {"CtrsYm", "ctrsYm", KeyKind::Text, &PIECE_T::CtrsYm, Need::Always, TextForm::Any,
     "Centre in Y minus, as the planning system has it."},
    {"Mirror", "mirror", KeyKind::Text, &PIECE_T::Mirror, Need::Always, TextForm::Any,
     "Whether the piece is mirrored."},
    {"Production_demand", "production_demand", KeyKind::Text,
     &PIECE_CHILD_SECOND_T::Production_demand, Need::Always, TextForm::Any,
     "A demand on production."},
    {"Extra_Pie", "extra_Pie", KeyKind::Text, &PIECE_T::Extra_Pie, Need::Always, TextForm::Any,
     "Type of holing."},
    {"cut_angle_convert", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::cut_angle_convert,
     Need::Always, TextForm::Any, "The cut angles in the words of the label."},
    // kept: "machin" is what some planning systems write
    {"machine", "machin", KeyKind::Text, &PIECE_CHILD_SECOND_T::machine, Need::Always,
     TextForm::Any, "The machine that the piece is planned for."},
    {"allow_min_cut", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::allow_min_cut, Need::Always,
     TextForm::Any, "The shortest cut that is allowed."},
    {"time_car", nullptr, KeyKind::Text, &PIECE_T::time_car, Need::Always, TextForm::Any,
     "When the trolley is due."},
    {"mark", nullptr, KeyKind::Text, &PIECE_T::mark, Need::Always, TextForm::Any,
     "Mark of the piece on its label."},
    {"boshan_value", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::boshan_value, Need::Always,
     TextForm::Any, "Value for the glazed sash."},
    {"shashan_value", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::shashan_value, Need::Always,
     TextForm::Any, "Value for the screen sash."},
    {"project_addr", nullptr, KeyKind::Text, &PIECE_CHILD_SECOND_T::project_addr, Need::Always,
     TextForm::Any, "Address of the building site."},
};
inline constexpr auto kPieceTable = model::keysOf(kPieceRows);
inline constexpr const auto& kPiece = kPieceTable.keys;

/// What a label field is for, in front of its number.
constexpr char kLabelNote[] = "Free text for the label, number ";

/// A label field: its two spellings fill different fields. Label fields are keys of the piece.
struct LabelKey {
  const char* spelling;
  std::string FIELD_T::*field;
  const char* secondSpelling;  ///< taken when the first is absent or no text
  std::string FIELD_T::*secondField;
};

/// Whether two rows fill the same field by their first spellings.
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

/// The cut of a piece: an object of its own, whose values the piece takes over.
inline constexpr DescribedKey<CUT_T> kCutRows[] = {
    {"Length", "length", KeyKind::Text, &CUT_T::Length, Need::Always, TextForm::Size,
     "Length of the piece from tip to tip, mm."},
    {"sxB", nullptr, KeyKind::Text, &CUT_T::sxB, Need::Always, TextForm::Angle,
     "Angle of the left end inside the piece, degrees; 90 is square."},
    {"dxB", nullptr, KeyKind::Text, &CUT_T::dxB, Need::Always, TextForm::Angle,
     "Angle of the right end inside the piece, degrees; 90 is square.",
     "\"135\" is stored as \"45\"."},
};
inline constexpr auto kCutTable = model::keysOf(kCutRows);
inline constexpr const auto& kCut = kCutTable.keys;

/// One machining work on a piece.
inline constexpr DescribedKey<WORK_T> kWorkRows[] = {
    {"Name", "name", KeyKind::Text, &WORK_T::Name, Need::Always, TextForm::Any,
     "Name of the operation, such as a drilling."},
    {"ProfiLav", "profiLav", KeyKind::Integer, &WORK_T::ProfiLav, Need::Always, TextForm::Side,
     "Number of the side that is worked on, as the machine numbers them."},
    {"PositionX", "positionX", KeyKind::Number, &WORK_T::PositionX, Need::Always, TextForm::Measure,
     "Position along the piece from its left tip, mm."},
    {"PositionY", "positionY", KeyKind::Number, &WORK_T::PositionY, Need::Always, TextForm::Measure,
     "Position across the profile from its lower edge, mm."},
    {"PositionZ", "positionZ", KeyKind::Number, &WORK_T::PositionZ, Need::Always, TextForm::Measure,
     "Position in height on the profile, mm."},
};
inline constexpr auto kWorkTable = model::keysOf(kWorkRows);
inline constexpr const auto& kWork = kWorkTable.keys;

/// The keys that lead from one level to the next.
constexpr char kBars[] = "Bar";        ///< header: array of bars
constexpr char kBarsSecond[] = "bar";  ///< taken when the first is no array
constexpr char kPieces[] = "piece";    ///< bar: array of pieces
constexpr char kCutOfPiece[] = "cut";  ///< piece: the cut object
constexpr char kWorks[] = "work";      ///< piece: array of works

// Each field of a record has its key: who adds one without the other cannot compile.
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
// The name fills whole numbers in the record, with room behind it where it needs less.
static_assert(sizeof(WORK_T) / sizeof(double) -
                      (sizeof(WORK_T::Name) + sizeof(double) - 1) / sizeof(double) ==
                  std::size(kWork) - 1,
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
