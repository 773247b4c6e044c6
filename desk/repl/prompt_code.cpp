#include "desk/repl/prompt_code.h"

#include <algorithm>

#include "desk/base/command_line.h"
#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/repl/completion.lua.h"
#include "desk/repl/values.lua.h"

namespace desk::repl {

namespace {

std::string textAt(lua_State* L, int index) {
  std::size_t size = 0;
  const char* bytes = luaL_checklstring(L, index, &size);
  return {bytes, size};
}

int characterSize(lua_State* L) {
  std::size_t size = 0;
  const char* bytes = luaL_checklstring(L, 1, &size);
  const auto at = static_cast<std::size_t>(luaL_checkinteger(L, 2) - 1);
  lua_pushinteger(L, static_cast<lua_Integer>(utf8CharacterSize({bytes, size}, at)));
  return 1;
}

int fittedText(lua_State* L) {
  const auto columns = static_cast<std::size_t>(luaL_checkinteger(L, 2));
  const std::string text = truncatedToColumns(textAt(L, 1), columns);
  lua_pushlstring(L, text.data(), text.size());
  return 1;
}

int width(lua_State* L) {
  lua_pushinteger(L, static_cast<lua_Integer>(displayWidth(textAt(L, 1))));
  return 1;
}

int escaped(lua_State* L) {
  const std::string text = escapeControls(textAt(L, 1));
  lua_pushlstring(L, text.data(), text.size());
  return 1;
}

std::vector<std::string> listAt(lua_State* L, int index) {
  std::vector<std::string> texts;
  const auto count = static_cast<lua_Integer>(lua_rawlen(L, index));
  for (lua_Integer i = 1; i <= count; ++i) {
    lua_rawgeti(L, index, i);
    texts.push_back(textAt(L, -1));
    lua_pop(L, 1);
  }
  return texts;
}

/// Of the names in a list; nil when none is near.
int nearestName(lua_State* L) {
  const std::string near = nearest(textAt(L, 1), listAt(L, 2));
  if (near.empty()) return 0;
  lua_pushstring(L, near.c_str());
  return 1;
}

/// Keeps a script's hook away from what runs while it lives, but not Ctrl-C, which sets one.
class WithoutHook {
 public:
  explicit WithoutHook(lua_State* L)
      : L_(L), hook_(lua_gethook(L)), mask_(lua_gethookmask(L)), count_(lua_gethookcount(L)) {
    lua_sethook(L, nullptr, 0, 0);
  }
  ~WithoutHook() {
    if (hook_ != nullptr && lua_gethook(L_) == nullptr) lua_sethook(L_, hook_, mask_, count_);
  }
  WithoutHook(const WithoutHook&) = delete;
  WithoutHook& operator=(const WithoutHook&) = delete;

 private:
  lua_State* L_;
  lua_Hook hook_;
  int mask_;
  int count_;
};

void loadChunk(lua_State* L, std::string_view code, const char* name) {
  if (luaL_loadbufferx(L, code.data(), code.size(), name, "t") != LUA_OK) lua_error(L);
}

/// Leaves meant, complete and valueText on the stack.
int load(lua_State* L) {
  const luaL_Reg natives[] = {
      {"characterSize", characterSize}, {"escaped", escaped}, {"fitted", fittedText},
      {"nearest", nearestName},         {"width", width},     {nullptr, nullptr}};
  luaL_newlib(L, natives);
  loadChunk(L, completion_lua, "=completion.lua");
  lua_pushvalue(L, 1);
  lua_call(L, 1, 3);  // natives, complete, isName, meant
  lua_insert(L, 2);   // natives, meant, complete, isName
  loadChunk(L, values_lua, "=values.lua");
  lua_insert(L, -2);    // natives, meant, complete, chunk, isName
  lua_pushvalue(L, 1);  // natives, meant, complete, chunk, isName, natives
  lua_call(L, 2, 1);    // natives, meant, complete, valueText
  return 3;
}

void pushLimits(lua_State* L, const Limits& limits) {
  const struct {
    const char* name;
    int value;
  } fields[] = {{"columns", limits.columns},
                {"entries", limits.entries},
                {"depth", limits.depth},
                {"values", limits.values},
                {"textColumns", limits.textColumns}};
  lua_newtable(L);
  for (const auto& field : fields) {
    lua_pushinteger(L, field.value);
    lua_setfield(L, -2, field.name);
  }
  lua_pushboolean(L, limits.rawTexts ? 1 : 0);
  lua_setfield(L, -2, "rawTexts");
}

struct Query {
  int function;  ///< in the registry
  std::string_view beforeCursor;
  Completions found;
};

int runQuery(lua_State* L) {
  auto& query = *static_cast<Query*>(lua_touserdata(L, 1));
  lua_rawgeti(L, LUA_REGISTRYINDEX, query.function);
  lua_pushlstring(L, query.beforeCursor.data(), query.beforeCursor.size());
  lua_call(L, 1, 2);  // how much is typed, words
  query.found.typed = static_cast<std::size_t>(lua_tointeger(L, -2));
  query.found.words = listAt(L, lua_gettop(L));
  return 0;
}

struct Riddle {
  int function;  ///< in the registry
  const std::string& chunk;
  const std::string& failure;  ///< empty for none
  std::string answer;
};

int runRiddle(lua_State* L) {
  auto& riddle = *static_cast<Riddle*>(lua_touserdata(L, 1));
  lua_rawgeti(L, LUA_REGISTRYINDEX, riddle.function);
  lua_pushlstring(L, riddle.chunk.data(), riddle.chunk.size());
  if (!riddle.failure.empty()) lua_pushstring(L, riddle.failure.c_str());
  lua_call(L, riddle.failure.empty() ? 1 : 2, 1);
  if (lua_isstring(L, -1) != 0) riddle.answer = textAt(L, -1);
  return 0;
}

}  // namespace

std::string Completions::common() const {
  if (words.empty()) return "";
  std::string common = words.front();
  for (const std::string& word : words) {
    const auto end = std::mismatch(common.begin(), common.end(), word.begin(), word.end()).first;
    common.erase(end, common.end());
  }
  return common;
}

PromptCode::PromptCode(lua_State* L) : L_(L) {
  lua_pushcfunction(L, load);
  if (lua_pcall(L, 0, 3, 0) != LUA_OK) throw Error(kExitIoError, lua_tostring(L, -1));
  valueText_ = luaL_ref(L, LUA_REGISTRYINDEX);
  complete_ = luaL_ref(L, LUA_REGISTRYINDEX);
  meant_ = luaL_ref(L, LUA_REGISTRYINDEX);
}

std::string PromptCode::valueText(int index, const Limits& limits) const {
  index = lua_absindex(L_, index);
  const WithoutHook noHook(L_);
  luaL_checkstack(L_, 5, "too many results");
  lua_rawgeti(L_, LUA_REGISTRYINDEX, valueText_);
  lua_pushvalue(L_, index);
  pushLimits(L_, limits);
  lua_call(L_, 2, 1);
  std::string text = textAt(L_, -1);
  lua_pop(L_, 1);
  return text;
}

Completions PromptCode::complete(std::string_view beforeCursor) const {
  const WithoutHook noHook(L_);
  Query query{complete_, beforeCursor, {}};
  lua_pushcfunction(L_, runQuery);
  lua_pushlightuserdata(L_, &query);
  if (lua_pcall(L_, 1, 0, 0) == LUA_OK) return query.found;
  lua_pop(L_, 1);
  return {};
}

std::string PromptCode::meant(const std::string& chunk, const std::string& failure) const {
  const WithoutHook noHook(L_);
  Riddle riddle{meant_, chunk, failure, {}};
  lua_pushcfunction(L_, runRiddle);
  lua_pushlightuserdata(L_, &riddle);
  if (lua_pcall(L_, 1, 0, 0) != LUA_OK) lua_pop(L_, 1);
  return riddle.answer;
}

}  // namespace desk::repl
