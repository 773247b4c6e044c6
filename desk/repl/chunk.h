// Lua source as it comes in, line by line.
#pragma once

#include <lua.hpp>
#include <string>

namespace desk::repl {

enum class Chunk {
  Ready,        ///< a function lies on top of the stack
  Incomplete,   ///< more lines may make it one; nothing lies on the stack
  SyntaxError,  ///< the message lies on top of the stack
};

/// Compiles `text`: an expression, whose value the function returns; the same behind a "="; or
/// statements.
Chunk compile(lua_State* L, const std::string& text);

}  // namespace desk::repl
