#include "fuzz/script_state.h"

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "module/registration.h"

namespace fuzzing {
namespace {

std::string exceptionText;
unsigned allowedErrors = kNone;

/// Calls the function in upvalue 1. Lua's own errors pass, exceptions end here: what Lua makes of
/// them is the host's affair.
int callFunction(lua_State* L) {
  int results = 0;
  const std::string outcome = outcomeOf(allowedErrors, [&] {
    results = lua_tocfunction(L, lua_upvalueindex(1))(L);
    require(results == 1, "a command has not just one result");
    return std::string();
  });
  exceptionText = outcome;
  if (outcome.empty()) return results;
  lua_settop(L, 0);
  lua_pushnil(L);
  return 1;
}

void pushArgument(lua_State* L, const std::string& argument) {
  if (argument == "!") {
    lua_pushnil(L);
  } else if (argument == "?") {
    lua_newtable(L);
  } else if (!argument.empty() && argument[0] == '#') {
    if (lua_stringtonumber(L, argument.c_str() + 1) == 0) lua_pushinteger(L, 0);
  } else {
    lua_pushlstring(L, argument.data(), argument.size());
  }
}

}  // namespace

lua_State* scriptState() {
  static lua_State* const state = [] {
    lua_State* L = luaL_newstate();
    luaL_openlibs(L);
    reg_cus_ParseModule(L);
    return L;
  }();
  return state;
}

std::string callModule(const std::string& function, const std::vector<std::string>& arguments,
                       unsigned allowed, std::string (*read)(lua_State*)) {
  lua_State* L = scriptState();
  require(lua_gettop(L) == 0, "the Lua stack is not level");
  allowedErrors = allowed;
  exceptionText.clear();
  luaL_checkstack(L, static_cast<int>(arguments.size()) + LUA_MINSTACK, "too many arguments");
  lua_getglobal(L, "cus_ParseModule");
  lua_getfield(L, -1, function.c_str());
  lua_pushcclosure(L, callFunction, 1);
  lua_remove(L, 1);
  for (const std::string& argument : arguments) pushArgument(L, argument);
  const int status = lua_pcall(L, static_cast<int>(arguments.size()), 1, 0);
  std::string result = exceptionText;
  if (status != LUA_OK) result = std::string("error ") + lua_tostring(L, -1);
  if (status == LUA_OK && result.empty()) result = read(L);
  lua_settop(L, 0);
  return result;
}

std::string valueAsText(lua_State* L) {
  // Asked before the conversion: it turns numbers into texts.
  if (lua_type(L, -1) == LUA_TNUMBER) return textOf(lua_tonumber(L, -1));
  require(lua_type(L, -1) == LUA_TSTRING, "a value that is neither text nor number");
  std::size_t size = 0;
  const char* bytes = lua_tolstring(L, -1, &size);
  return textOf(std::string(bytes, size));
}

std::string rowsAsText(lua_State* L) {
  require(lua_istable(L, -1), "a query gives no table");
  std::string text;
  const lua_Integer rows = luaL_len(L, -1);
  for (lua_Integer row = 1; row <= rows; ++row) {
    lua_rawgeti(L, -1, row);
    require(lua_istable(L, -1), "a row is no table");
    for (lua_pushnil(L); lua_next(L, -2) != 0; lua_pop(L, 1)) text += valueAsText(L);
    lua_pop(L, 1);
    text += "\n";
  }
  return text;
}

}  // namespace fuzzing
