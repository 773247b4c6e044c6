// Turns records into rows of Lua tables, driven by tables of row keys.
#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>

namespace lua_rows {

/// The member that a row value comes from.
template <class Row>
struct ValueOf {
  constexpr ValueOf(std::string Row::*member) : text(member) {}
  constexpr ValueOf(const char* Row::*member) : view(member) {}
  constexpr ValueOf(double Row::*member) : number(member) {}

  std::string Row::*text = nullptr;
  const char* Row::*view = nullptr;
  double Row::*number = nullptr;
};

/// One key of a row table. Rows are set in the order of their key table.
template <class Row>
struct RowKey {
  const char* key;
  ValueOf<Row> value;
};

/// Sets the keys of `row` in the table on top of the stack. Texts end at their first zero byte.
template <class Row, std::size_t count>
void setFields(lua_State* L, const RowKey<Row> (&keys)[count], const Row& row) {
  for (const RowKey<Row>& key : keys) {
    lua_pushstring(L, key.key);
    if (key.value.number != nullptr) {
      lua_pushnumber(L, row.*key.value.number);
    } else if (key.value.text != nullptr) {
      lua_pushstring(L, (row.*key.value.text).c_str());
    } else {
      lua_pushstring(L, row.*key.value.view);
    }
    lua_settable(L, -3);
  }
}

/// Pushes a new result table.
inline void newResult(lua_State* L) {
  lua_createtable(L, 0, 0);
}

/// Pops the row on top of the stack and appends it to the result below it.
inline void appendRow(lua_State* L) {
  lua_rawseti(L, -2, luaL_len(L, -2) + 1);
}

}  // namespace lua_rows
