#include "module/query_commands.h"

#include <lua.hpp>
#include <string_view>
#include <unordered_map>

#include "model/job_walks.h"
#include "module/readers.h"
#include "module/script_rows.h"

// Arguments are read before the first object with a destructor is alive: on a host whose Lua is
// built as C an argument error jumps over destructors.

namespace {

using lua_rows::appendRow;
using lua_rows::newResult;
using lua_rows::setFields;
using script_rows::Dimensions;

Dimensions dimensionsOf(const BAR_T& bar, const PIECE_T& piece) {
  return {bar.MaxY.c_str(), bar.MaxZ.c_str(), piece.Length.c_str()};
}

/// The dimensions that go with a barcode; reports an unknown one and answers with empty texts.
Dimensions lookUp(const DATA_T& job, const std::string& barCode) {
  const model::PieceOnBar found = model::findPiece(job, barCode);
  if (found.piece != nullptr) return dimensionsOf(*found.bar, *found.piece);
  model::reportUnknownBarCode(barCode);
  return {};
}

void appendWork(lua_State* L, const WORK_T& work, const Dimensions& dimensions) {
  lua_createtable(L, 0, std::size(script_rows::kWork) + std::size(script_rows::kDimensions));
  setFields(L, script_rows::kWork, work);
  setFields(L, script_rows::kDimensions, dimensions);
  appendRow(L);
}

void appendAllWorks(lua_State* L, const DATA_T& job) {
  const bool answersDimensions = model::declaresVersion1(job);
  // The first piece in file order gives the dimensions of a barcode, and that is also the first one
  // that this walk meets: so one walk does, where a look-up per work would take time squared.
  std::unordered_map<std::string_view, Dimensions> dimensions;
  model::forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    const Dimensions known =
        dimensions.try_emplace(piece.BarCode, dimensionsOf(bar, piece)).first->second;
    for (const WORK_T& work : piece.work) {
      if (!answersDimensions) model::reportUnknownBarCode(piece.BarCode);
      lua_createtable(L, 0, 8);
      setFields(L, script_rows::kWorkOwner, {piece.BarCode.c_str()});
      setFields(L, script_rows::kWork, work);
      setFields(L, script_rows::kDimensions, answersDimensions ? known : Dimensions{});
      appendRow(L);
    }
  });
}

void appendWorksOf(lua_State* L, const DATA_T& job, const std::string& barCode) {
  const Dimensions dimensions = lookUp(job, barCode);
  model::forEachWorkOf(job, barCode, [&](const WORK_T& work) { appendWork(L, work, dimensions); });
}

/// Sets what the JSON reader gives to every cut row, for jobs of either format.
void askJsonReader(script_rows::Cut& row) {
  json.getHeight(row.Height);
  json.getAllBarCodeToMap();
  row.MaterialCount = std::to_string(json.getMaterialCount());
}

}  // namespace

int getWorkCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string barCode = argument;
  newResult(L);
  const DATA_T* job = currentJob();
  if (job == nullptr) return 1;
  if (barCode.empty()) {
    appendAllWorks(L, *job);
  } else {
    appendWorksOf(L, *job, barCode);
  }
  return 1;
}

int getCutCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string barNumber = argument;
  // All bar numbers are converted before the first row is made: one that is no number raises.
  if (barNumber.empty() && nFileType == kJsonJob) json.refillMaterialList();
  newResult(L);
  script_rows::Cut row;
  askJsonReader(row);
  const DATA_T* job = currentJob();
  if (job == nullptr) return 1;

  const auto append = [&] {
    row.BarCode = json.getBarCode(row.BarNumber, row.PieceNumber);
    lua_createtable(L, 0, std::size(script_rows::kCut));
    setFields(L, script_rows::kCut, row);
    appendRow(L);
  };
  if (barNumber.empty()) {
    model::forEachCut(*job, row, append);
  } else {
    model::forEachCutOf(*job, barNumber, row, append);
  }
  return 1;
}

int getHoleCommand(lua_State* L) {
  if (nFileType == kJsonJob) model::collectHoles(json.data, json.holeList);
  newResult(L);
  if (nFileType != kJsonJob) return 1;
  lua_Integer count = 0;
  for (const tagHOHEINFO& hole : json.holeList) {
    lua_pushinteger(L, ++count);
    lua_createtable(L, 0, std::size(script_rows::kHole));
    setFields(L, script_rows::kHole, hole);
    lua_settable(L, -3);
  }
  return 1;
}

int getPrintCommand(lua_State* L) {
  newResult(L);
  const DATA_T* job = currentJob();
  if (job == nullptr) return 1;
  model::forEachLabel(*job, [&](const PRINT_T& label) {
    lua_createtable(L, 0, std::size(script_rows::kLabel));
    setFields(L, script_rows::kLabel, label);
    appendRow(L);
  });
  return 1;
}

int getDimensionsCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string barCode = argument;
  newResult(L);
  const DATA_T* job = currentJob();
  if (job == nullptr) return 1;

  const model::PieceOnBar found = model::findPiece(*job, barCode);
  bool holdsRows = false;
  // kept: a work of another piece makes the rows found so far worthless, so that scripts see only
  // those behind the last such work
  model::forEachWork(*job, [&](const PIECE_T& piece, const WORK_T&) {
    if (piece.BarCode == barCode) {
      if (found.piece == nullptr) model::reportUnknownBarCode(barCode);
      lua_createtable(L, 0, std::size(script_rows::kDimensions));
      setFields(L, script_rows::kDimensions,
                found.piece ? dimensionsOf(*found.bar, *found.piece) : Dimensions{});
      appendRow(L);
      holdsRows = true;
    } else if (holdsRows) {
      lua_settop(L, -2);
      newResult(L);
      holdsRows = false;
    }
  });
  return 1;
}
