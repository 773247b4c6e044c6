// The prompt's own Lua code: shows values, completes names and helps.
#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk::repl {

/// How much of a table is shown.
struct Limits {
  int columns = 80;       ///< a table that fits into a line is written in one
  int entries = 30;       ///< of one table; the others are counted
  int depth = 4;          ///< of tables within tables
  int values = 1000;      ///< altogether
  int textColumns = 200;  ///< of one text
  bool rawTexts =
      false;  ///< a text that is all there is, and what __tostring says, stay as they are
};

struct Completions {
  std::size_t typed = 0;           ///< how many bytes before the cursor they take the place of
  std::vector<std::string> words;  ///< in order, without duplicates

  /// What all words begin with.
  std::string common() const;
};

/// The functions of values.lua and completion.lua in one script state. Scripts that change globals
/// do not reach them, and their hooks do not see them.
class PromptCode {
 public:
  /// Make it before scripts run: it keeps the standard functions that it finds. The state must
  /// outlive it. Throws Error when memory is short.
  explicit PromptCode(lua_State* L);

  /// The value at `index`: a text between quotation marks, a table with what it holds, everything
  /// else as `tostring` has it, with what could harm a terminal spelled out. Sequences come first,
  /// then keys in order; a table within itself is shown as a cycle. Metamethods other than
  /// __tostring and __name are not called. May raise a Lua error.
  std::string valueText(int index, const Limits& limits) const;

  /// Completes the name before the cursor: of a global or a word of the language, or behind "." and
  /// ":" that of a field. Calls nothing of a script's; fields are looked for in tables and in the
  /// tables that stand for them as __index. Nothing when memory is short.
  Completions complete(std::string_view beforeCursor) const;

  /// The name that was meant by one in `chunk` that has no value: the one that a failure of Lua's
  /// is about, or, without one, a chunk that is a field alone. Empty when nothing is near.
  std::string meant(const std::string& chunk, const std::string& failure) const;

 private:
  lua_State* L_;
  int valueText_ = LUA_NOREF;  ///< in the registry
  int complete_ = LUA_NOREF;
  int meant_ = LUA_NOREF;
};

/// Sets the globals `help`, `exit` and `quit`. Each says what it is for when its name alone is
/// typed. help(f) writes the text of a function of the module, help() the overview.
/// @param module name of the global that holds the script module
/// @param texts of its functions by their names
void addHelp(lua_State* L, const char* module,
             const std::vector<std::pair<std::string, std::string>>& texts,
             const std::string& overview);

}  // namespace desk::repl
