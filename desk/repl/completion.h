// What may follow what was typed.
#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace desk::repl {

struct Completions {
  std::size_t typed = 0;           ///< how many bytes before the cursor they take the place of
  std::vector<std::string> words;  ///< in order, without duplicates

  /// What all words begin with.
  std::string common() const;
};

/// Completes the name before the cursor: of a global or a word of the language, or behind "." and
/// ":" that of a field. Calls no Lua code; fields are looked for in tables and in the tables that
/// stand for them as __index.
Completions complete(lua_State* L, std::string_view beforeCursor);

}  // namespace desk::repl
