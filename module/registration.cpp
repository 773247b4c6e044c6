#include "module/registration.h"

#include <cstdio>
#include <lua.hpp>

#include "module/load_commands.h"
#include "module/progress_command.h"
#include "module/query_commands.h"

extern "C" int Custom_RegLuaLib(lua_State* L) {
  reg_cus_ParseModule(L);
  return 1;
}

void reg_cus_ParseModule(void* state) {
  if (state == nullptr) return;
  lua_State* L = static_cast<lua_State*>(state);
  std::puts("cus_ParseModule --------------------------------");
  luaL_requiref(L, "cus_ParseModule", luaopen_cus_ParseModule, 1);
  lua_settop(L, -2);
  std::puts("cus_ParseModule2 --------------------------------");
}

// The script functions: the index of this folder.
static const luaL_Reg kFunctions[] = {
    {"get_work", getWorkCommand},
    {"get_cut", getCutCommand},
    {"get_hole", getHoleCommand},
    {"get_print", getPrintCommand},
    {"get_Dimensions", getDimensionsCommand},
    {"getjson_uDisk", getjsonUDiskCommand},
    {"getjson_Flash", getjsonFlashCommand},
    {"getjson_url", getjsonUrlCommand},
    {"save_cutCurIndex", saveCutCurIndexCommand},
    {nullptr, nullptr},
};

int luaopen_cus_ParseModule(lua_State* L) {
  lua_createtable(L, 0, 0);
  luaL_setfuncs(L, kFunctions, 0);
  return 1;
}
