// Lua values as people read them.
#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>

namespace desk::repl {

/// How much of a table is shown.
struct Limits {
  std::size_t columns = 80;       ///< a table that fits into a line is written in one
  std::size_t entries = 30;       ///< of one table; the others are counted
  std::size_t depth = 4;          ///< of tables within tables
  std::size_t values = 1000;      ///< altogether
  std::size_t textColumns = 200;  ///< of one text in a table
};

/// The value at `index`: a text as it is, a table with what it holds, everything else as `tostring`
/// has it. Sequences come first, then keys in order; a table within itself is shown as a cycle.
/// Metamethods other than __tostring and __name are not called. May raise a Lua error.
std::string valueText(lua_State* L, int index, const Limits& limits);

}  // namespace desk::repl
