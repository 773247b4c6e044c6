#include "desk/panel/panel_script.h"

namespace desk {

namespace {

constexpr int kInstructionsPerLook = 10'000;

/// Calls the library function in upvalue 1; what it writes is the script's.
int callAsScript(lua_State* L) {
  const Console::Voice voice(contextOf(L).console, Speaker::Script);
  return lua_tocfunction(L, lua_upvalueindex(1))(L);
}

/// Makes the output of the function `name` of the table on top of the stack the script's.
void wrapOutput(lua_State* L, const char* name) {
  lua_getfield(L, -1, name);
  lua_pushcclosure(L, callAsScript, 1);
  lua_setfield(L, -2, name);
}

int refuseExit(lua_State* L) {
  return luaL_error(L, "os.exit: a panel's script ends with the panel");
}

void adaptLibraries(lua_State* L) {
  lua_pushglobaltable(L);
  wrapOutput(L, "print");
  lua_getglobal(L, "io");
  wrapOutput(L, "write");
  luaL_getmetatable(L, LUA_FILEHANDLE);
  wrapOutput(L, "write");
  lua_getglobal(L, "os");
  lua_pushcfunction(L, refuseExit);
  lua_setfield(L, -2, "exit");
  lua_settop(L, 0);
}

/// Ends running code once the panel is to stop: now, and again whenever it catches that.
void endWhenStopped(lua_State* L, lua_Debug*) {
  if (!contextOf(L).stop) return;
  lua_sethook(L, endWhenStopped, LUA_MASKCOUNT, 1);
  luaL_error(L, "the panel is closed");
}

/// Turns what was raised into a message with a traceback.
int traceback(lua_State* L) {
  luaL_traceback(L, L, luaL_tolstring(L, 1, nullptr), 1);
  return 1;
}

}  // namespace

PanelScript::PanelScript(const script::Plugin& plugin, TablePart& part, Console& console,
                         const std::atomic<bool>& stop, const PanelFacts& facts)
    : file_(facts.script),
      context_{part, console, stop},
      engine_(plugin, script::ModuleErrors::Guarded) {
  lua_State* L = engine_.state();
  installPanelTable(L, context_, facts);
  adaptLibraries(L);
  lua_sethook(L, endWhenStopped, LUA_MASKCOUNT, kInstructionsPerLook);
}

bool PanelScript::start() {
  lua_State* L = engine_.state();
  lua_newtable(L);
  lua_pushstring(L, file_.c_str());
  lua_rawseti(L, -2, 0);
  lua_setglobal(L, "arg");
  if (luaL_loadfile(L, file_.c_str()) == LUA_OK) return call(0);
  context_.console.say(Speaker::Error, lua_tostring(L, -1));
  lua_settop(L, 0);
  return false;
}

bool PanelScript::clicked() {
  if (!pushHandler("on_click")) return true;
  lua_State* L = engine_.state();
  const std::optional<int> index = context_.part.index();
  index ? lua_pushinteger(L, *index) : lua_pushnil(L);
  return call(1);
}

bool PanelScript::turn(Turn direction) {
  lua_State* L = engine_.state();
  if (!pushHandler("on_page")) lua_pushcfunction(L, turnPage);
  lua_pushstring(L, direction == Turn::Up ? "up" : "down");
  return call(1);
}

bool PanelScript::jobChanged(bool& succeeded) {
  if (!pushHandler("on_job")) return false;
  succeeded = call(0);
  return true;
}

void PanelScript::retryRefresh() {
  if (context_.refreshIsDue) context_.refreshIsDue = !context_.part.refresh();
}

/// Pushes the script's function of that name, if it has one.
bool PanelScript::pushHandler(const char* name) {
  lua_State* L = engine_.state();
  lua_settop(L, 0);
  pushPanelTable(L);
  lua_pushstring(L, name);
  if (lua_rawget(L, 1) == LUA_TFUNCTION) return true;
  lua_settop(L, 0);
  return false;
}

/// Calls the function below its arguments on top of the stack, and clears the stack.
bool PanelScript::call(int arguments) {
  lua_State* L = engine_.state();
  const int function = lua_gettop(L) - arguments;
  lua_pushcfunction(L, traceback);
  lua_insert(L, function);
  const int status = lua_pcall(L, arguments, 0, function);
  if (status != LUA_OK) {
    // Below zero: a C++ exception that Lua let through; what lies on the stack is chance.
    const char* message = status < 0 ? "a C++ exception left the script" : lua_tostring(L, -1);
    context_.console.say(Speaker::Error, message != nullptr ? message : "unknown error");
  }
  lua_settop(L, 0);
  return status == LUA_OK;
}

}  // namespace desk
