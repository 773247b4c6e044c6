// Rows on their way to Lua: the sink of the script commands.
#pragma once

#include <array>
#include <cstddef>
#include <lua.hpp>
#include <string>
#include <utility>

#include "model/job_walks.h"
#include "module/script_rows.h"

namespace lua_rows {

/// What a row table comes to in the plug-in: a key and what pushes its value, without words. The
/// key stands in the table itself: Lua keeps texts by their addresses modulo 53, two for each
/// remainder, and the addresses of a table's keys, 24 bytes apart, have no remainder in common.
template <class Row>
struct PushKey {
  char key[16];
  void (*push)(lua_State* L, const Row& row);
};

template <class Row, std::size_t index>
void pushValue(lua_State* L, const Row& row) {
  constexpr const row_keys::Cell<Row>& cell = script_rows::KeysOf<Row>::keys[index].cell;
  if constexpr (cell.isNumber()) {
    lua_pushnumber(L, cell.of(row).number);
  } else {
    lua_pushstring(L, cell.of(row).text);
  }
}

/// Does not compile for a key that is too long.
template <class Row, std::size_t index>
constexpr PushKey<Row> pushKey() {
  PushKey<Row> made{{}, pushValue<Row, index>};
  const char* const key = script_rows::KeysOf<Row>::keys[index].key;
  for (std::size_t i = 0; key[i] != '\0'; ++i) made.key[i] = key[i];
  if (made.key[std::size(made.key) - 1] != '\0') throw "a key of more than 15 bytes";
  return made;
}

template <class Row, std::size_t... index>
constexpr std::array<PushKey<Row>, sizeof...(index)> pushKeys(std::index_sequence<index...>) {
  return {{pushKey<Row, index>()...}};
}

template <class Row>
inline constexpr auto kPushKeys =
    pushKeys<Row>(std::make_index_sequence<std::size(script_rows::KeysOf<Row>::keys)>());

}  // namespace lua_rows

/// The result table of a query, on top of the Lua stack from its construction on. Script code may
/// run whenever a row is added.
class LuaRows {
 public:
  explicit LuaRows(lua_State* L) : L_(L) { newResult(); }

  template <class Row>
  void operator()(const Row& row) {
    pushRow(row);
    lua_rawseti(L_, -2, luaL_len(L_, -2) + 1);
  }

  void operator()(const script_rows::Hole& hole) {
    lua_pushinteger(L_, ++holes_);
    pushRow(hole);
    lua_settable(L_, -3);
  }

  /// A look-up found no piece with this barcode.
  void unknown(const std::string& barCode) { model::reportUnknownBarCode(barCode); }

  /// The rows so far are worth nothing.
  void startAnew() {
    lua_settop(L_, -2);
    newResult();
  }

 private:
  void newResult() { lua_createtable(L_, 0, 0); }

  template <class Row>
  void pushRow(const Row& row) {
    const auto& keys = lua_rows::kPushKeys<Row>;
    const auto* key = keys.data() + script_rows::keysLeftOut(row);
    const auto* const end = keys.data() + keys.size();
    lua_createtable(L_, 0, static_cast<int>(end - key));
    for (; key != end; ++key) {
      lua_pushstring(L_, key->key);
      key->push(L_, row);
      lua_settable(L_, -3);
    }
  }

  lua_State* L_;
  lua_Integer holes_ = 0;
};
