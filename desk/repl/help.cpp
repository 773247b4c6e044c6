#include <cstdio>
#include <string_view>

#include "desk/base/errors.h"
#include "desk/repl/help.lua.h"
#include "desk/repl/prompt_code.h"

namespace desk::repl {

namespace {

struct Words {
  const char* module;
  const std::vector<std::pair<std::string, std::string>>& texts;
  const std::string& overview;
};

int write(lua_State* L) {
  std::fputs(luaL_checkstring(L, 1), stdout);
  return 0;
}

int add(lua_State* L) {
  const auto& words = *static_cast<const Words*>(lua_touserdata(L, 1));
  const std::string_view code = help_lua;
  if (luaL_loadbufferx(L, code.data(), code.size(), "=help.lua", "t") != LUA_OK) {
    return lua_error(L);
  }
  lua_getglobal(L, words.module);
  lua_newtable(L);
  for (const auto& [name, text] : words.texts) {
    lua_pushstring(L, text.c_str());
    lua_setfield(L, -2, name.c_str());
  }
  lua_pushstring(L, words.overview.c_str());
  lua_pushcfunction(L, write);
  lua_call(L, 4, 0);
  return 0;
}

}  // namespace

void addHelp(lua_State* L, const char* module,
             const std::vector<std::pair<std::string, std::string>>& texts,
             const std::string& overview) {
  Words words{module, texts, overview};
  lua_pushcfunction(L, add);
  lua_pushlightuserdata(L, &words);
  if (lua_pcall(L, 1, 0, 0) != LUA_OK) throw Error(kExitIoError, lua_tostring(L, -1));
}

}  // namespace desk::repl
