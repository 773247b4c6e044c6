// The rows that scripts receive: the keys of each, in the order in which they are set.
#pragma once

#include "model/job_records.h"
#include "model/query_rows.h"
#include "module/lua_rows.h"

namespace script_rows {

using lua_rows::pushMember;
using lua_rows::RowKey;

/// The dimensions that go with a barcode. Views into the job, empty texts where there is no piece.
struct Dimensions {
  const char* maxY = "";
  const char* maxZ = "";
  const char* cutLength = "";
};

/// The barcode in front of a work when all works are asked for. A view into the job.
struct WorkOwner {
  const char* barCode;
};

/// One row of get_cut: the cut and what the JSON reader adds to it. Views into the job and into the
/// reader.
struct Cut {
  const char* barNumber;
  const char* height;  ///< of the profile, the same on every row
  const char* length;  ///< of the bar
  const char* cutLength;
  const char* sxB;
  const char* dxB;
  const char* piecesOnBar;
  const char* barCode;  ///< empty unless all cuts are asked for
  const char* barName;
  const char* materialCount;  ///< the highest bar number, the same on every row
};

// --- names fixed by the scripts ------------------------------------------------------------------

inline constexpr RowKey<WorkOwner> kWorkOwner[] = {{"BarCode", pushMember<&WorkOwner::barCode>}};

inline constexpr RowKey<WORK_T> kWork[] = {
    {"Name", pushMember<&WORK_T::Name>},
    {"PositionX", pushMember<&WORK_T::PositionX>},
    {"PositionY", pushMember<&WORK_T::PositionY>},
    {"PositionZ", pushMember<&WORK_T::PositionZ>},
};

inline constexpr RowKey<Dimensions> kDimensions[] = {
    {"MaxY", pushMember<&Dimensions::maxY>},
    {"MaxZ", pushMember<&Dimensions::maxZ>},
    {"Cut_Length", pushMember<&Dimensions::cutLength>},
};

inline constexpr RowKey<Cut> kCut[] = {
    {"BarNumber", pushMember<&Cut::barNumber>},
    {"Height", pushMember<&Cut::height>},
    {"Length", pushMember<&Cut::length>},
    {"CutLength", pushMember<&Cut::cutLength>},
    {"SxB", pushMember<&Cut::sxB>},
    {"DxB", pushMember<&Cut::dxB>},
    {"CutNumBer", pushMember<&Cut::piecesOnBar>},
    {"BarCode", pushMember<&Cut::barCode>},
    {"BarName", pushMember<&Cut::barName>},
    {"MaterialCount", pushMember<&Cut::materialCount>},
};

inline constexpr RowKey<tagHOHEINFO> kHole[] = {
    {"name", pushMember<&tagHOHEINFO::name>},
    {"length", pushMember<&tagHOHEINFO::length>},
    {"width", pushMember<&tagHOHEINFO::width>},
    {"height", pushMember<&tagHOHEINFO::height>},
};

inline constexpr RowKey<PRINT_T> kLabel[] = {
    {"sProfileCode", pushMember<&PRINT_T::sProfileCode>},
    {"sProfileName", pushMember<&PRINT_T::sProfileName>},
    {"sProfileLength", pushMember<&PRINT_T::sProfileLength>},
    {"sNameProduct", pushMember<&PRINT_T::sNameProduct>},
    {"sColor", pushMember<&PRINT_T::sColor>},
    {"sIndoorColor", pushMember<&PRINT_T::sIndoorColor>},
    {"sOutdoorColor", pushMember<&PRINT_T::sOutdoorColor>},
    {"sLengthProduct", pushMember<&PRINT_T::sLengthProduct>},
    {"sPosition", pushMember<&PRINT_T::sPosition>},
    {"sWindow", pushMember<&PRINT_T::sWindow>},
    {"sCutAngle", pushMember<&PRINT_T::sCutAngle>},
    {"sProcess", pushMember<&PRINT_T::sProcess>},
    {"sMaterialHeight", pushMember<&PRINT_T::sMaterialHeight>},
};

static_assert(sizeof(Cut) == std::size(kCut) * sizeof(const char*),
              "every text of a cut has a row key");
static_assert(sizeof(PRINT_T) == std::size(kLabel) * sizeof(std::string),
              "every label slot has a row key");

}  // namespace script_rows
