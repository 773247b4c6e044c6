#include <string_view>

#include "desk/repl/repl.h"

namespace desk::repl {

namespace {

constexpr char kName[] = "=stdin";

/// Whether the compiler met the end of the text where something else had to come.
bool endsTooEarly(lua_State* L, int status) {
  constexpr std::string_view kEnd = "<eof>";
  if (status != LUA_ERRSYNTAX) return false;
  const std::string_view message = lua_tostring(L, -1);
  return message.size() >= kEnd.size() &&
         message.compare(message.size() - kEnd.size(), kEnd.size(), kEnd) == 0;
}

int load(lua_State* L, const std::string& text) {
  return luaL_loadbufferx(L, text.data(), text.size(), kName, "t");
}

}  // namespace

Chunk compile(lua_State* L, const std::string& text) {
  const bool isMarked = !text.empty() && text.front() == '=';
  const std::string expression = "return " + text.substr(isMarked ? 1 : 0);
  int status = load(L, expression);
  if (status == LUA_OK) return Chunk::Ready;
  const bool isBegun = endsTooEarly(L, status);
  if (!isMarked) {
    lua_pop(L, 1);
    status = load(L, text);
    if (status == LUA_OK) return Chunk::Ready;
  }
  if (!isBegun && !endsTooEarly(L, status)) return Chunk::SyntaxError;
  lua_pop(L, 1);
  return Chunk::Incomplete;
}

}  // namespace desk::repl
