#include "bench/flat_rows.h"

#include <stdexcept>

namespace bench {
namespace {

constexpr std::size_t kTextBytesPerPiece = 400;

std::size_t piecesOf(const DATA_T& job) {
  std::size_t pieces = 0;
  for (const BAR_T& bar : job.Bar) pieces += bar.piece.size();
  return pieces;
}

}  // namespace

const char* FlatRows::keep(const std::string& text) {
  if (texts_.size() + text.size() + 1 > texts_.capacity()) {
    throw std::length_error("the job's texts are longer than reckoned with");
  }
  const std::size_t begin = texts_.size();
  texts_.insert(texts_.end(), text.c_str(), text.c_str() + text.size() + 1);
  return texts_.data() + begin;
}

void FlatRows::push(lua_State* L) const {
  lua_createtable(L, 0, 0);
  const int width = static_cast<int>(keys_.size());
  for (auto value = values_.begin(); value != values_.end();) {
    lua_createtable(L, 0, width);
    for (const char* key : keys_) {
      lua_pushstring(L, key);
      if (value->text != nullptr) {
        lua_pushstring(L, value->text);
      } else {
        lua_pushnumber(L, value->number);
      }
      lua_settable(L, -3);
      ++value;
    }
    lua_rawseti(L, -2, luaL_len(L, -2) + 1);
  }
}

FlatWorks::FlatWorks(const DATA_T& job)
    : FlatRows({"BarCode", "Name", "PositionX", "PositionY", "PositionZ", "MaxY", "MaxZ",
                "Cut_Length"}) {
  reserve(kTextBytesPerPiece * piecesOf(job));
  for (const BAR_T& bar : job.Bar) {
    const char* const maxY = keep(bar.MaxY);
    const char* const maxZ = keep(bar.MaxZ);
    for (const PIECE_T& piece : bar.piece) {
      const char* const barCode = keep(piece.BarCode);
      const char* const length = keep(piece.Length);
      for (const WORK_T& work : piece.work) {
        add({{barCode},
             {keep(work.Name)},
             {nullptr, work.PositionX},
             {nullptr, work.PositionY},
             {nullptr, work.PositionZ},
             {maxY},
             {maxZ},
             {length}});
      }
    }
  }
}

FlatCuts::FlatCuts(const DATA_T& job)
    : FlatRows({"BarNumber", "Height", "Length", "CutLength", "SxB", "DxB", "CutNumBer", "BarCode",
                "BarName", "MaterialCount"}) {
  reserve(kTextBytesPerPiece * piecesOf(job));
  const char* const height = keep(job.Bar.front().MaxZ);
  const char* const materials = keep(job.Bar.back().BarNumber);
  for (const BAR_T& bar : job.Bar) {
    const char* const number = keep(bar.BarNumber);
    const char* const length = keep(bar.length);
    const char* const pieces = keep(std::to_string(bar.piece.size()));
    const char* const name = keep(bar.BarName);
    for (const PIECE_T& piece : bar.piece) {
      add({{number},
           {height},
           {length},
           {keep(piece.Length)},
           {keep(piece.sxB)},
           {keep(piece.dxB)},
           {pieces},
           {keep(piece.BarCode)},
           {name},
           {materials}});
    }
  }
}

FlatLabels::FlatLabels(const DATA_T& job)
    : FlatRows({"sProfileCode", "sProfileName", "sProfileLength", "sNameProduct", "sColor",
                "sIndoorColor", "sOutdoorColor", "sLengthProduct", "sPosition", "sWindow",
                "sCutAngle", "sProcess", "sMaterialHeight"}) {
  reserve(kTextBytesPerPiece * piecesOf(job));
  for (const BAR_T& bar : job.Bar) {
    const char* const profile = keep(bar.DXF_Name);
    const char* const length = keep(bar.length);
    const char* const name = keep(bar.BarName);
    const char* const color = keep(bar.BarColor);
    const char* const left = keep(bar.BarLeftLength);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      const char* const none = "";
      add({{keep(piece.mark)},
           {profile},
           {length},
           {name},
           {color},
           {none},
           {none},
           {left},
           {none},
           {none},
           {keep(piece.cut_angle_convert)},
           {none},
           {none}});
    }
  }
}

}  // namespace bench
