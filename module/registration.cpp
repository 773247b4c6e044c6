#include "module/registration.h"

#include <cstdio>
#include <iterator>
#include <lua.hpp>

#include "module/script_functions.h"

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

namespace {

/// The functions as the host's Lua takes them; an empty row ends them.
struct Registered {
  luaL_Reg rows[std::size(script_functions::kFunctions) + 1];
};

constexpr Registered registered() {
  Registered made{};
  for (std::size_t i = 0; i < std::size(script_functions::kFunctions); ++i) {
    const script_functions::Function& function = script_functions::kFunctions[i];
    made.rows[i] = {function.words.name, function.command};
  }
  return made;
}

constexpr Registered kRegistered = registered();

}  // namespace

int luaopen_cus_ParseModule(lua_State* L) {
  lua_createtable(L, 0, 0);
  luaL_setfuncs(L, kRegistered.rows, 0);
  return 1;
}
