// Calls a Lua function that hosts need not offer.
#include <lua.hpp>

int complain(lua_State* L);
int complain(lua_State* L) {
  return luaL_error(L, "no such bar");
}
