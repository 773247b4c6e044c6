// Turns records into rows of Lua tables, driven by tables of row keys.
#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>

namespace lua_rows {

inline void pushValue(lua_State* L, const std::string& text) {
  lua_pushstring(L, text.c_str());
}

inline void pushValue(lua_State* L, const char* text) {
  lua_pushstring(L, text);
}

inline void pushValue(lua_State* L, double number) {
  lua_pushnumber(L, number);
}

/// Pushes one member of a row. Texts end at their first zero byte.
template <auto member, class Row>
void pushMember(lua_State* L, const Row& row) {
  pushValue(L, row.*member);
}

/// One key of a row table and what pushes its value. Rows are set in the order of their key table.
template <class Row>
struct RowKey {
  const char* key;
  void (*push)(lua_State* L, const Row& row);
};

/// Sets the keys of `row` in the table on top of the stack.
template <class Row, std::size_t count>
void setFields(lua_State* L, const RowKey<Row> (&keys)[count], const Row& row) {
  for (const RowKey<Row>& key : keys) {
    lua_pushstring(L, key.key);
    key.push(L, row);
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
