#include "module/query_commands.h"

#include <lua.hpp>

#include "json/bar_code_refill.h"
#include "model/first_pieces.h"
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

constexpr int kWorkWithOwner = std::size(script_rows::kWorkOwner) + std::size(script_rows::kWork) +
                               std::size(script_rows::kDimensions);

void appendAllWorks(lua_State* L, const DATA_T& job) {
  const bool answersDimensions = model::declaresVersion1(job);
  // The first piece in file order gives the dimensions of a barcode, and that is also the first one
  // that this walk meets: so one walk does, where a look-up per work would take time squared.
  model::FirstPieces firstPieces(job);
  model::forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    const model::PieceOnBar first = firstPieces.meet({&bar, &piece});
    const Dimensions dimensions =
        answersDimensions ? dimensionsOf(*first.bar, *first.piece) : Dimensions{};
    for (const WORK_T& work : piece.work) {
      if (!answersDimensions) model::reportUnknownBarCode(piece.BarCode);
      lua_createtable(L, 0, kWorkWithOwner);
      setFields(L, script_rows::kWorkOwner, {piece.BarCode.c_str()});
      setFields(L, script_rows::kWork, work);
      setFields(L, script_rows::kDimensions, dimensions);
      appendRow(L);
    }
  });
}

void appendWorksOf(lua_State* L, const DATA_T& job, const std::string& barCode) {
  const Dimensions dimensions = lookUp(job, barCode);
  model::forEachWorkOf(job, barCode, [&](const WORK_T& work) { appendWork(L, work, dimensions); });
}

/// What the JSON reader gives to every cut row, for jobs of either format.
struct SharedByCuts {
  std::string height;
  std::string materialCount;
};

SharedByCuts askJsonReader() {
  SharedByCuts shared;
  json.getHeight(shared.height);
  shared.materialCount = std::to_string(json.getMaterialCount());
  return shared;
}

/// The cuts of a bar. `barCodeOf(piece)` gives their barcodes.
template <class BarCodeOf>
void appendCuts(lua_State* L, const BAR_T& bar, const SharedByCuts& shared, BarCodeOf barCodeOf) {
  const std::string piecesOnBar = model::pieceCountOf(bar);
  for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
    const std::string& barCode = barCodeOf(piece);
    const script_rows::Cut row = {bar.BarNumber.c_str(), shared.height.c_str(),
                                  bar.length.c_str(),    piece.Length.c_str(),
                                  piece.sxB.c_str(),     piece.dxB.c_str(),
                                  piecesOnBar.c_str(),   barCode.c_str(),
                                  bar.BarName.c_str(),   shared.materialCount.c_str()};
    lua_createtable(L, 0, std::size(script_rows::kCut));
    setFields(L, script_rows::kCut, row);
    appendRow(L);
  }
}

/// All cuts of the JSON job with the barcodes of their own pieces, filling the JSON reader's map on
/// the way: what asking for the cuts again comes to, unless two pieces have the same numbers.
/// False: the map has to be built first, and the rows made are worth nothing.
bool appendOwnCuts(lua_State* L, const SharedByCuts& shared) {
  BarCodeRefill refill(json.barCodeMap);
  model::Lookahead ahead(json.data);
  for (const BAR_T& bar : json.data.Bar) {
    if (!refill.add(bar)) return false;
    appendCuts(L, bar, shared, [&](const PIECE_T& piece) -> const std::string& {
      ahead.advance();
      return piece.BarCode;
    });
  }
  return true;
}

/// All cuts of a job with the barcodes that the JSON reader finds by their numbers.
void appendCutsByNumbers(lua_State* L, const DATA_T& job, const SharedByCuts& shared) {
  json.getAllBarCodeToMap();
  model::Lookahead ahead(job);
  for (const BAR_T& bar : job.Bar) {
    if (bar.piece.empty()) continue;
    std::map<std::string, std::string>& barCodes = json.barCodeMap[bar.BarNumber];
    appendCuts(L, bar, shared, [&](const PIECE_T& piece) -> const std::string& {
      ahead.advance();
      return barCodes[piece.PieceNumber];
    });
  }
}

/// The cuts of the bars with that number, all with the barcode that goes with no piece number.
void appendCutsOf(lua_State* L, const DATA_T& job, const std::string& barNumber,
                  const SharedByCuts& shared) {
  json.getAllBarCodeToMap();
  model::forEachBarOf(job, barNumber, [&](const BAR_T& bar) {
    if (bar.piece.empty()) return;
    const std::string& barCode = json.barCodeMap[bar.BarNumber][""];
    appendCuts(L, bar, shared, [&](const PIECE_T&) -> const std::string& { return barCode; });
  });
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
  const SharedByCuts shared = askJsonReader();
  const DATA_T* job = currentJob();
  if (job == nullptr) {
    json.getAllBarCodeToMap();
  } else if (!barNumber.empty()) {
    appendCutsOf(L, *job, barNumber, shared);
  } else if (nFileType != kJsonJob || !appendOwnCuts(L, shared)) {
    lua_settop(L, -2);
    newResult(L);
    appendCutsByNumbers(L, *job, shared);
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
