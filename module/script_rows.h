// The rows that scripts receive: the keys of each, in the order in which they are set.
#pragma once

#include "model/job_records.h"
#include "model/query_rows.h"
#include "module/lua_rows.h"

namespace script_rows {

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

/// One row of get_cut: the cut and what the JSON reader adds to it.
struct Cut : RETURNACUT_T {
  std::string Height;         ///< of the profile, the same on every row
  std::string BarCode;        ///< empty unless all cuts are asked for
  std::string MaterialCount;  ///< the highest bar number, the same on every row
};

// --- names fixed by the scripts ------------------------------------------------------------------

inline constexpr RowKey<WorkOwner> kWorkOwner[] = {{"BarCode", &WorkOwner::barCode}};

inline constexpr RowKey<WORK_T> kWork[] = {
    {"Name", &WORK_T::Name},
    {"PositionX", &WORK_T::PositionX},
    {"PositionY", &WORK_T::PositionY},
    {"PositionZ", &WORK_T::PositionZ},
};

inline constexpr RowKey<Dimensions> kDimensions[] = {
    {"MaxY", &Dimensions::maxY},
    {"MaxZ", &Dimensions::maxZ},
    {"Cut_Length", &Dimensions::cutLength},
};

inline constexpr RowKey<Cut> kCut[] = {
    {"BarNumber", &Cut::BarNumber},         {"Height", &Cut::Height},   {"Length", &Cut::Length},
    {"CutLength", &Cut::CutLength},         {"SxB", &Cut::SxB},         {"DxB", &Cut::DxB},
    {"CutNumBer", &Cut::CutNumBer},         {"BarCode", &Cut::BarCode}, {"BarName", &Cut::BarName},
    {"MaterialCount", &Cut::MaterialCount},
};

inline constexpr RowKey<tagHOHEINFO> kHole[] = {
    {"name", &tagHOHEINFO::name},
    {"length", &tagHOHEINFO::length},
    {"width", &tagHOHEINFO::width},
    {"height", &tagHOHEINFO::height},
};

inline constexpr RowKey<PRINT_T> kLabel[] = {
    {"sProfileCode", &PRINT_T::sProfileCode},
    {"sProfileName", &PRINT_T::sProfileName},
    {"sProfileLength", &PRINT_T::sProfileLength},
    {"sNameProduct", &PRINT_T::sNameProduct},
    {"sColor", &PRINT_T::sColor},
    {"sIndoorColor", &PRINT_T::sIndoorColor},
    {"sOutdoorColor", &PRINT_T::sOutdoorColor},
    {"sLengthProduct", &PRINT_T::sLengthProduct},
    {"sPosition", &PRINT_T::sPosition},
    {"sWindow", &PRINT_T::sWindow},
    {"sCutAngle", &PRINT_T::sCutAngle},
    {"sProcess", &PRINT_T::sProcess},
    {"sMaterialHeight", &PRINT_T::sMaterialHeight},
};

static_assert(sizeof(PRINT_T) == std::size(kLabel) * sizeof(std::string),
              "every label slot has a row key");

}  // namespace script_rows
