#include <stdexcept>

#include "desk/base/text.h"
#include "desk/job/job_file.h"
#include "desk/script/script_engine.h"

namespace desk::script {

namespace {

constexpr char kCommand[] = "getjson_Flash";

/// What was raised, without the name that the guard puts in front.
[[noreturn]] void raise(lua_State* L) {
  const char* text = lua_tostring(L, -1);
  const std::string message = text == nullptr ? "unknown error" : text;
  const std::string name = std::string(kCommand) + ": ";
  lua_settop(L, 0);
  throw std::runtime_error(startsWith(message, name) ? message.substr(name.size()) : message);
}

lua_Integer call(lua_State* L, const std::string& name) {
  lua_settop(L, 0);
  lua_getglobal(L, kModule);
  lua_getfield(L, -1, kCommand);
  lua_pushlstring(L, name.data(), name.size());
  if (lua_pcall(L, 1, 1, 0) != LUA_OK) raise(L);
  lua_getfield(L, -1, "errorCode");
  const lua_Integer code = lua_tointeger(L, -1);
  lua_settop(L, 0);
  return code;
}

}  // namespace

job::PresentedJob loadJob(ScriptEngine& engine, const std::string& file) {
  return job::loadJob(file,
                      [&](const job::PresentedJob& job) { return call(engine.state(), job.name); });
}

}  // namespace desk::script
