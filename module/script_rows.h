// The rows that scripts receive: the keys of each, in the order in which they are set, and in words
// what they hold.
#pragma once

#include <cstddef>
#include <iterator>

#include "module/row_keys.h"

namespace script_rows {

using row_keys::Key;

/// The dimensions that go with a barcode, empty texts where there is no such piece.
struct Dimensions {
  model::Text maxY = &model::kNoText;
  model::Text maxZ = &model::kNoText;
  model::Text cutLength = &model::kNoText;
};

/// One row of get_work.
struct Work : Dimensions {
  model::Text barCode = nullptr;  ///< null when the works of one piece are asked for: no such key
  model::Text name = &model::kNoText;
  model::Number positionX = nullptr;
  model::Number positionY = nullptr;
  model::Number positionZ = nullptr;
};

/// One row of get_cut: the cut and what the JSON reader adds to it.
struct Cut : model::CutRow {
  model::Text height = &model::kNoText;   ///< of the profile, the same on every row
  model::Text barCode = &model::kNoText;  ///< empty unless all cuts are asked for
  model::DerivedText highestBar;          ///< the highest bar number, the same on every row
};

using Hole = model::HoleRow;
using Label = model::LabelRow;

// --- names fixed by the scripts ------------------------------------------------------------------

inline constexpr Key<Dimensions> kDimensions[] = {
    {"MaxY", &Dimensions::maxY, "width of the profile"},
    {"MaxZ", &Dimensions::maxZ, "height of the profile"},
    {"Cut_Length", &Dimensions::cutLength, "length of the piece"},
};

/// The first key is there when all works are asked for.
inline constexpr Key<Work> kWork[] = {
    {"BarCode", &Work::barCode, "barcode of the piece; only in rows of get_work(\"\")"},
    {"Name", &Work::name, "name of the operation"},
    {"PositionX", &Work::positionX, "position along the piece"},
    {"PositionY", &Work::positionY, "position across the profile"},
    {"PositionZ", &Work::positionZ, "position in height on the profile"},
    {"MaxY", &Work::maxY, kDimensions[0].note},
    {"MaxZ", &Work::maxZ, kDimensions[1].note},
    {"Cut_Length", &Work::cutLength, kDimensions[2].note},
};

inline constexpr Key<Cut> kCut[] = {
    {"BarNumber", &Cut::barNumber, "number of the bar"},
    {"Height", &Cut::height, "height of the profile: MaxZ of the first bar of the JSON job"},
    {"Length", &Cut::length, "length of the bar"},
    {"CutLength", &Cut::cutLength, "length of the piece"},
    {"SxB", &Cut::sxB, "angle of the left end, degrees"},
    {"DxB", &Cut::dxB, "angle of the right end, degrees"},
    {"CutNumBer", &Cut::piecesOnBar, "how many pieces the bar holds"},
    {"BarCode", &Cut::barCode,
     "barcode of the piece; empty unless all cuts of a JSON job are asked for"},
    {"BarName", &Cut::barName, "name of the bar"},
    {"MaterialCount", &Cut::highestBar,
     "highest bar number when all cuts of a JSON job were last asked for"},
};

inline constexpr Key<Hole> kHole[] = {
    {"name", &Hole::name, "name of the operation"},
    {"length", &Hole::length, "length of the first piece that has it"},
    {"width", &Hole::width, "width of that piece's profile"},
    {"height", &Hole::height, "height of that piece's profile"},
};

inline constexpr char kNeverFilled[] = "always empty";

inline constexpr Key<Label> kLabel[] = {
    {"sProfileCode", &Label::profileCode, "the piece's mark"},
    {"sProfileName", &Label::profileName, "drawing of the profile's cross section"},
    {"sProfileLength", &Label::profileLength, "length of the bar"},
    {"sNameProduct", &Label::nameProduct, "name of the bar"},
    {"sColor", &Label::color, "colour of the bar"},
    {"sIndoorColor", &Label::indoorColor, kNeverFilled},
    {"sOutdoorColor", &Label::outdoorColor, kNeverFilled},
    {"sLengthProduct", &Label::lengthProduct, "what is left over of the bar"},
    {"sPosition", &Label::position, kNeverFilled},
    {"sWindow", &Label::window, kNeverFilled},
    {"sCutAngle", &Label::cutAngle, "the cut angles in the words of the label"},
    {"sProcess", &Label::process, kNeverFilled},
    {"sMaterialHeight", &Label::materialHeight, kNeverFilled},
};

static_assert(sizeof(Label) == (std::size(kLabel) + 2) * sizeof(model::Text),
              "every label slot has a row key");

// -------------------------------------------------------------------------------------------------

/// The table of a row. The first `optional` keys may be left out.
template <const auto& table, std::size_t optionalKeys = 0>
struct Table {
  static constexpr const auto& keys = table;
  static constexpr std::size_t optional = optionalKeys;
};
template <class Row>
struct KeysOf;
template <>
struct KeysOf<Work> : Table<kWork, 1> {};
template <>
struct KeysOf<Cut> : Table<kCut> {};
template <>
struct KeysOf<Hole> : Table<kHole> {};
template <>
struct KeysOf<Label> : Table<kLabel> {};
template <>
struct KeysOf<Dimensions> : Table<kDimensions> {};

/// How many keys a row leaves out.
template <class Row>
std::size_t keysLeftOut(const Row&) {
  return 0;
}
inline std::size_t keysLeftOut(const Work& row) {
  return row.barCode == nullptr ? KeysOf<Work>::optional : 0;
}

/// visit(key, value) for each key of a row, in order.
template <class Row, class Visit>
void forEachValue(const Row& row, Visit&& visit) {
  const auto& keys = KeysOf<Row>::keys;
  for (std::size_t i = keysLeftOut(row); i < std::size(keys); ++i) {
    visit(keys[i].key, row_keys::valueOf(keys[i].cell, row));
  }
}

}  // namespace script_rows
