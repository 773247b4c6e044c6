#include "bench/scan.h"

#include <json/value.h>

#include <lua.hpp>
#include <stdexcept>

namespace bench {
namespace {

constexpr char kScan[] = R"(
local job = ...
local bars = job.Bar
return function(barcode)
  local rows, maxY, maxZ, length = {}
  for i = 1, #bars do
    local pieces = bars[i].piece
    for j = 1, #pieces do
      local piece = pieces[j]
      if piece.BarCode == barcode then
        if not length then
          maxY, maxZ, length = bars[i].MaxY, bars[i].MaxZ, piece.cut.Length
        end
        for _, work in ipairs(piece.work) do
          rows[#rows + 1] = {
            Name = work.Name, PositionX = work.PositionX, PositionY = work.PositionY,
            PositionZ = work.PositionZ, MaxY = maxY, MaxZ = maxZ, Cut_Length = length,
          }
        end
      end
    end
  end
  return rows
end)";

void pushDecoded(lua_State* L, const Json::Value& value) {
  switch (value.type()) {
    case Json::objectValue:
      lua_createtable(L, 0, 0);
      for (auto member = value.begin(); member != value.end(); ++member) {
        lua_pushstring(L, member.name().c_str());
        pushDecoded(L, *member);
        lua_rawset(L, -3);
      }
      break;
    case Json::arrayValue:
      lua_createtable(L, 0, 0);
      for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
        pushDecoded(L, value[i]);
        lua_rawseti(L, -2, static_cast<lua_Integer>(i) + 1);
      }
      break;
    case Json::intValue:
      lua_pushinteger(L, value.asInt());
      break;
    case Json::stringValue:
      lua_pushstring(L, value.asCString());
      break;
    case Json::booleanValue:
      lua_pushboolean(L, value.asBool() ? 1 : 0);
      break;
    default:
      lua_pushnumber(L, value.asDouble());
  }
}

}  // namespace

void pushScan(lua_State* L, const Json::Value& document) {
  luaL_requiref(L, "_G", luaopen_base, 1);
  lua_settop(L, -2);
  if (luaL_loadstring(L, kScan) != LUA_OK) throw std::logic_error(lua_tostring(L, -1));
  pushDecoded(L, document);
  lua_call(L, 1, 1);
}

}  // namespace bench
