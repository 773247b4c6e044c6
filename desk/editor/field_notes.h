// What each field of a job is for: the one place from which schema, XSD and the tables in
// docs/jobs.md take their words.
//
// A note belongs to a field and so to the key of either format that fills it.
#pragma once

#include <string>
#include <variant>

#include "model/job_records.h"
#include "model/key_table.h"

namespace desk::editor {

/// What a text should look like for those who read it, beyond being a text.
enum class TextForm {
  Any,
  Count,    ///< a whole number
  Measure,  ///< a plain decimal number: a length or an angle
};

/// The field that a note is about; nothing for an element that fills none.
template <class Record>
using FieldId =
    std::variant<std::monostate, std::string Record::*, double Record::*, bool Record::*>;

template <class Record>
struct FieldNote {
  FieldId<Record> field;
  TextForm form;
  const char* text;     ///< one sentence
  const char* answers;  ///< the script rows that hold the value: "get_cut BarName, ..."; or empty
};

template <class Record>
constexpr FieldId<Record> fieldOf(const model::Key<Record>& key) {
  using model::KeyKind;
  switch (key.kind) {
    case KeyKind::Text:
    case KeyKind::IntegerText:
      return key.field.text;
    case KeyKind::Integer:
    case KeyKind::Number:
      return key.field.number;
    case KeyKind::Flag:
      return key.field.flag;
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return {};
}

inline constexpr FieldNote<DATA_T> kHeaderNotes[] = {
    {&DATA_T::success, TextForm::Any, "Whether the planning system made the job without error.",
     ""},
    {&DATA_T::code, TextForm::Any, "The planning system's own result code.", ""},
    {&DATA_T::message, TextForm::Any, "The planning system's own message.", ""},
    {&DATA_T::Version, TextForm::Any, "Version of the job format.", ""},
    {&DATA_T::Generator, TextForm::Any, "The program that wrote the job.", ""},
    {&DATA_T::Unit, TextForm::Any, "Unit of the lengths, mm. Nothing is converted.", ""},
    {&DATA_T::Name, TextForm::Any, "Name of the job.", ""},
};

inline constexpr FieldNote<BAR_T> kBarNotes[] = {
    {&BAR_T::DXF_Name, TextForm::Any, "Drawing of the profile's cross section.",
     "get_print sProfileName"},
    {&BAR_T::BarNumber, TextForm::Count, "Number of the bar, by which get_cut finds it.",
     "get_cut BarNumber, get_cut MaterialCount"},
    {&BAR_T::MaxY, TextForm::Measure, "Width of the profile.",
     "get_work MaxY, get_Dimensions MaxY, get_hole width"},
    {&BAR_T::MaxZ, TextForm::Measure, "Height of the profile.",
     "get_work MaxZ, get_Dimensions MaxZ, get_cut Height, get_hole height"},
    {&BAR_T::length, TextForm::Measure, "Length of the bar.",
     "get_cut Length, get_print sProfileLength"},
    {&BAR_T::BarName, TextForm::Any, "Name of the bar.", "get_cut BarName, get_print sNameProduct"},
    {&BAR_T::BarColor, TextForm::Any, "Colour of the bar.", "get_print sColor"},
    {&BAR_T::Sortingcode, TextForm::Any, "Code by which bars are sorted.", ""},
    {&BAR_T::BarLeftLength, TextForm::Measure, "What is left over of the bar after its last cut.",
     "get_print sLengthProduct"},
    {&BAR_T::BarType, TextForm::Count, "Kind of the bar, a number of the planning system.", ""},
    {&BAR_T::BarCad, TextForm::Any, "Drawing file of the bar.", ""},
};

inline constexpr FieldNote<PIECE_CHILD_SECOND_T> kPieceNotes[] = {
    {&PIECE_T::PieceNumber, TextForm::Count, "Number of the piece within its bar.", ""},
    {&PIECE_T::Num, TextForm::Count, "How many of the piece.", ""},
    {&PIECE_T::Over_status, TextForm::Count, "How far the piece has come, as planned.", ""},
    {&PIECE_T::BarCode, TextForm::Any,
     "Barcode on the piece's label, by which get_work and get_Dimensions find it.",
     "get_work BarCode, get_cut BarCode"},
    {&PIECE_T::Customer, TextForm::Any, "Customer who ordered the window or door.", ""},
    {&PIECE_T::Cc_code, TextForm::Any, "Code of the window or door in its order.", ""},
    {&PIECE_T::order_code, TextForm::Any, "Code of the order.", ""},
    {&PIECE_CHILD_SECOND_T::plan_code, TextForm::Any, "Code of the production plan.", ""},
    {&PIECE_T::Buyer, TextForm::Any, "Who buys from the factory.", ""},
    {&PIECE_T::BuyAddress, TextForm::Any, "Address of the buyer.", ""},
    {&PIECE_CHILD_SECOND_T::CarCode, TextForm::Any, "Code of the trolley for the piece.", ""},
    {&PIECE_T::CtrsX, TextForm::Any, "Centre in X, as the planning system has it.", ""},
    {&PIECE_T::CtrsYp, TextForm::Any, "Centre in Y plus, as the planning system has it.", ""},
    {&PIECE_T::CtrsYm, TextForm::Any, "Centre in Y minus, as the planning system has it.", ""},
    {&PIECE_T::Mirror, TextForm::Any, "Whether the piece is mirrored.", ""},
    {&PIECE_CHILD_SECOND_T::Production_demand, TextForm::Any, "A demand on production.", ""},
    {&PIECE_T::Extra_Pie, TextForm::Any, "Type of holing.", ""},
    {&PIECE_CHILD_SECOND_T::cut_angle_convert, TextForm::Any,
     "The cut angles in the words of the label.", "get_print sCutAngle"},
    {&PIECE_CHILD_SECOND_T::machine, TextForm::Any, "The machine that the piece is planned for.",
     ""},
    {&PIECE_CHILD_SECOND_T::allow_min_cut, TextForm::Any, "The shortest cut that is allowed.", ""},
    {&PIECE_T::time_car, TextForm::Any, "When the trolley is due.", ""},
    {&PIECE_T::mark, TextForm::Any, "Mark of the piece on its label.", "get_print sProfileCode"},
    {&PIECE_CHILD_SECOND_T::boshan_value, TextForm::Any, "Value for the glazed sash.", ""},
    {&PIECE_CHILD_SECOND_T::shashan_value, TextForm::Any, "Value for the screen sash.", ""},
    {&PIECE_CHILD_SECOND_T::project_addr, TextForm::Any, "Address of the building site.", ""},
};

/// The note of an element that must be there and fills no field.
inline constexpr char kRequiredNote[] = "Centre in Z. Must hold text, which is read and dropped.";
/// The note of an element that is looked up and never stored.
inline constexpr char kIgnoredNote[] = "Read and never stored. Write holing_type instead.";
/// The note of a label field, in front of its number.
inline constexpr char kLabelNote[] = "Free text for the label, number ";

inline constexpr FieldNote<CUT_T> kCutNotes[] = {
    {&CUT_T::Length, TextForm::Measure, "Length of the piece.",
     "get_cut CutLength, get_work Cut_Length, get_Dimensions Cut_Length, get_hole length"},
    {&CUT_T::sxB, TextForm::Measure, "Angle of the left end, degrees.", "get_cut SxB"},
    {&CUT_T::dxB, TextForm::Measure, "Angle of the right end, degrees.", "get_cut DxB"},
};

inline constexpr FieldNote<WORK_T> kWorkNotes[] = {
    {&WORK_T::Name, TextForm::Any, "Name of the operation, such as a drilling.",
     "get_work Name, get_hole name"},
    {&WORK_T::ProfiLav, TextForm::Any, "Side of the profile that is worked on.", ""},
    {&WORK_T::PositionX, TextForm::Any, "Position along the piece.", "get_work PositionX"},
    {&WORK_T::PositionY, TextForm::Any, "Position across the profile.", "get_work PositionY"},
    {&WORK_T::PositionZ, TextForm::Any, "Position in height on the profile.", "get_work PositionZ"},
};

}  // namespace desk::editor
