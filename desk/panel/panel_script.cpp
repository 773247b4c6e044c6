#include "desk/panel/panel_script.h"

#include "desk/base/errors.h"
#include "desk/job/job_file.h"
#include "desk/script/script_engine.h"

namespace desk::panel {

namespace {

constexpr int kInstructionsPerLook = 10'000;

/// Calls the library function in upvalue 1; what it writes is the script's.
int callAsScript(lua_State* L) {
  const Console::OutputScope scope(contextOf(L).console, OutputSource::Script);
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

/// To be called in protected mode, as finalisers may raise.
int collectGarbage(lua_State* L) {
  lua_gc(L, LUA_GCCOLLECT, 0);
  return 0;
}

}  // namespace

PanelScript::PanelScript(const script::Plugin& plugin, TablePart& part, Console& console,
                         const std::atomic<bool>& stop, const PanelFacts& facts)
    : file_(facts.script),
      context_{part, console, stop},
      engine_(plugin, script::ModuleErrors::Guarded) {
  lua_State* L = engine_.state();
  engine_.reportTo(
      [this](const std::string& failure) { context_.console.say(OutputSource::Error, failure); });
  installPanelTable(L, context_, facts);
  adaptLibraries(L);
  lua_sethook(L, endWhenStopped, LUA_MASKCOUNT, kInstructionsPerLook);
}

std::string PanelScript::loadJob(const std::string& file) try {
  script::loadJob(engine_, file);
  return "";
} catch (const Error& error) {
  return error.what();
}

bool PanelScript::start() try {
  return engine_.run(file_, {}) == kExitOk;
} catch (const Error& error) {
  context_.console.say(OutputSource::Error, error.what());
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
  // Garbage is what the script had of the job before, and there may be megabytes of it.
  lua_pushcfunction(engine_.state(), collectGarbage);
  succeeded = call(0) && succeeded;
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
  const bool succeeded = engine_.call(arguments);
  lua_settop(engine_.state(), 0);
  return succeeded;
}

}  // namespace desk::panel
