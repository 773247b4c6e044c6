#include "desk/script/script_engine.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <exception>
#include <new>
#include <utility>

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/base/output.h"
#include "desk/base/text.h"

namespace desk::script {

namespace {

StdoutRedirect::To destinationOf(PluginLines lines) {
  switch (lines) {
    case PluginLines::Dropped:
      return StdoutRedirect::To::Nowhere;
    case PluginLines::StandardError:
      return StdoutRedirect::To::StandardError;
    case PluginLines::Kept:
      break;
  }
  return StdoutRedirect::To::StandardOutput;
}

constexpr char kNoMemory[] = "not enough memory";  ///< as Lua says of its own

/// Whether memory ran out since the last call from outside. Lua keeps nothing of an exception.
thread_local bool memoryRanOut = false;

void noteShortage() {
  memoryRanOut = true;
  throw std::bad_alloc();
}

/// What to say of a C++ exception that Lua let through.
const char* exceptionText() {
  return memoryRanOut ? kNoMemory : "a C++ exception left the script";
}

/// A module function behind its guard.
struct Guarded {
  std::string name;
  lua_CFunction function;
  PluginLines lines;

  bool operator==(const Guarded& other) const {
    return name == other.name && function == other.function && lines == other.lines;
  }
};

/// All of the process. Scripts can change the upvalues of a guard: those only hold a number of
/// these, from 1.
std::deque<Guarded>& guarded() {
  static std::deque<Guarded> all;
  return all;
}

lua_Integer numberOf(const Guarded& wanted) {
  const auto found = std::find(guarded().begin(), guarded().end(), wanted);
  const auto number = found - guarded().begin() + 1;
  if (found == guarded().end()) guarded().push_back(wanted);
  return number;
}

const Guarded& calledOne(lua_State* L) {
  const lua_Integer number = lua_tointeger(L, lua_upvalueindex(1));
  const bool isOne = number > 0 && number <= static_cast<lua_Integer>(guarded().size());
  if (!isOne) luaL_error(L, "the upvalue of a module function was changed");
  return guarded()[static_cast<std::size_t>(number - 1)];
}

int callRedirected(lua_State* L) {
  const Guarded& called = calledOne(L);
  const StdoutRedirect redirect(destinationOf(called.lines));
  return called.function(L);
}

const char* reasonOf(const std::exception& exception) {
  const bool isShortage = dynamic_cast<const std::bad_alloc*>(&exception) != nullptr;
  return isShortage ? kNoMemory : exception.what();
}

/// Errors of Lua's own pass.
int callGuarded(lua_State* L) {
  const Guarded& called = calledOne(L);
  try {
    return callRedirected(L);
  } catch (const std::exception& exception) {
    lua_settop(L, 0);
    luaL_where(L, 1);
    lua_pushfstring(L, "%s: %s", called.name.c_str(), reasonOf(exception));
    lua_concat(L, 2);
  }
  return lua_error(L);
}

/// Puts a guard around every function of the module, in place. The arguments are the guard and what
/// it is to do with the lines.
int guardModule(lua_State* L) {
  const auto lines = static_cast<PluginLines>(lua_tointeger(L, 2));
  lua_getglobal(L, kModule);
  const int module = lua_gettop(L);
  for (lua_pushnil(L); lua_next(L, module) != 0; lua_pop(L, 1)) {  // name, function
    if (!lua_iscfunction(L, -1)) continue;
    lua_pushvalue(L, -2);  // name, function, name
    lua_pushinteger(L, numberOf({lua_tostring(L, -1), lua_tocfunction(L, -2), lines}));
    lua_pushcclosure(L, lua_tocfunction(L, 1), 1);  // name, function, name, guard
    lua_settable(L, module);                        // name, function
  }
  return 0;
}

/// Turns what was raised into a message with a traceback, as the stock interpreter does.
int traceback(lua_State* L) {
  const char* message = lua_tostring(L, 1);
  if (message == nullptr) {
    if (luaL_callmeta(L, 1, "__tostring") && lua_type(L, -1) == LUA_TSTRING) return 1;
    message = lua_pushfstring(L, "(error object is a %s value)", luaL_typename(L, 1));
  }
  luaL_traceback(L, L, message, 1);
  return 1;
}

}  // namespace

void writeFailure(const std::string& failure) {
  std::fflush(stdout);
  std::fprintf(stderr, "cusdesk: %s\n", escapeControls(failure, "\n\t").c_str());
  if (failure.find("(global 'panel')") == std::string::npos) return;
  std::fputs("cusdesk: scripts that use the table 'panel' run with cusdesk panel --script FILE\n",
             stderr);
}

/// @param message Lua's: "cannot open FILE: reason"
Error unreadable(const std::string& script, const std::string& message) {
  return cannotRead(script, message.substr(message.rfind(": ") + 2));
}

ScriptEngine::ScriptEngine(const Plugin& plugin, ModuleErrors errors, PluginLines lines)
    : state_(luaL_newstate()), report_(writeFailure) {
  if (state_ == nullptr) throw Error(kExitIoError, "not enough memory for a Lua state");
  lua_State* L = state();
  luaL_openlibs(L);
  std::set_new_handler(noteShortage);
  {
    const StdoutRedirect redirect(destinationOf(lines));
    plugin.registerModule(L);
  }
  if (errors == ModuleErrors::Raw && lines == PluginLines::Kept) return;
  lua_pushcfunction(L, guardModule);
  lua_pushcfunction(L, errors == ModuleErrors::Raw ? callRedirected : callGuarded);
  lua_pushinteger(L, static_cast<int>(lines));
  if (lua_pcall(L, 2, 0, 0) != LUA_OK) {
    throw Error(kExitIoError, "the plug-in registered no module " + std::string(kModule));
  }
}

void ScriptEngine::reportTo(std::function<void(const std::string&)> report) {
  report_ = std::move(report);
}

/// Reports what a protected call left on the stack.
int ScriptEngine::reportFailure(int status) {
  lua_State* L = state();
  // A status below zero is a C++ exception that Lua let through; what lies on the stack is chance.
  const char* message = status < 0 ? exceptionText() : lua_tostring(L, -1);
  report_(message != nullptr ? message : "unknown error");
  lua_settop(L, 0);
  return kExitFindings;
}

int ScriptEngine::run(const std::string& script, const std::vector<std::string>& arguments) {
  lua_State* L = state();
  setArguments(script, arguments);
  const int loaded = luaL_loadfile(L, script == "-" ? nullptr : script.c_str());
  if (loaded == LUA_ERRFILE) throw unreadable(script, lua_tostring(L, -1));
  if (loaded != LUA_OK) return reportFailure(loaded);
  luaL_checkstack(L, static_cast<int>(arguments.size()) + 1, "too many arguments");
  for (const std::string& argument : arguments) lua_pushstring(L, argument.c_str());
  if (!call(static_cast<int>(arguments.size()))) return kExitFindings;
  lua_settop(L, 0);
  return kExitOk;
}

void ScriptEngine::setArguments(const std::string& script,
                                const std::vector<std::string>& arguments) {
  lua_State* L = state();
  lua_newtable(L);
  lua_pushstring(L, script.c_str());
  lua_rawseti(L, -2, 0);
  lua_Integer position = 0;
  for (const std::string& argument : arguments) {
    lua_pushstring(L, argument.c_str());
    lua_rawseti(L, -2, ++position);
  }
  lua_setglobal(L, "arg");
}

bool ScriptEngine::call(int arguments) {
  lua_State* L = state();
  const int handler = lua_gettop(L) - arguments;
  lua_pushcfunction(L, traceback);
  lua_insert(L, handler);
  memoryRanOut = false;
  const int status = lua_pcall(L, arguments, LUA_MULTRET, handler);
  if (status != LUA_OK) {
    reportFailure(status);
    return false;
  }
  lua_remove(L, handler);
  return true;
}

}  // namespace desk::script
