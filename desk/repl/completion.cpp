#include "desk/repl/completion.h"

#include <algorithm>
#include <set>

#include "desk/repl/lua_words.h"

namespace desk::repl {

namespace {

/// "job.get_c" is the path "job" and the beginning "get_c".
struct Typed {
  std::vector<std::string> path;
  std::string beginning;
  bool isMethod = false;  ///< the last separator was ":"
};

Typed typedAt(std::string_view text) {
  const auto belongs = [](char byte) {
    return byte == '.' || byte == ':' || isNameCharacter(byte, false);
  };
  std::size_t start = text.size();
  while (start > 0 && belongs(text[start - 1])) --start;
  Typed typed;
  for (const char byte : text.substr(start)) {
    if (byte != '.' && byte != ':') {
      typed.beginning += byte;
      continue;
    }
    typed.path.push_back(typed.beginning);
    typed.beginning.clear();
    typed.isMethod = byte == ':';
  }
  return typed;
}

constexpr int kMostTables = 10;  ///< that stand for one another as __index

/// Replaces the value on top of the stack by the table behind it that __index names, or by nil.
void toFallback(lua_State* L) {
  if (luaL_getmetafield(L, -1, "__index") == LUA_TNIL) lua_pushnil(L);
  lua_replace(L, -2);
}

/// Replaces the value on top of the stack by its field, or by nil.
void toField(lua_State* L, const std::string& name) {
  for (int i = 0; i < kMostTables && !lua_isnil(L, -1); ++i) {
    if (lua_istable(L, -1)) {
      lua_pushlstring(L, name.data(), name.size());
      if (lua_rawget(L, -2) != LUA_TNIL) {
        lua_replace(L, -2);
        return;
      }
      lua_pop(L, 1);
    }
    toFallback(L);
  }
  lua_pushnil(L);
  lua_replace(L, -2);
}

bool startsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

void addOwnFields(lua_State* L, const Typed& typed, std::set<std::string>& words) {
  for (lua_pushnil(L); lua_next(L, -2) != 0; lua_pop(L, 1)) {
    if (lua_type(L, -2) != LUA_TSTRING || (typed.isMethod && !lua_isfunction(L, -1))) continue;
    const std::string name = lua_tostring(L, -2);
    if (isName(name) && startsWith(name, typed.beginning)) words.insert(name);
  }
}

/// Adds the names in the value on top of the stack, and pops it.
void addFields(lua_State* L, const Typed& typed, std::set<std::string>& words) {
  for (int i = 0; i < kMostTables && !lua_isnil(L, -1); ++i) {
    if (lua_istable(L, -1)) addOwnFields(L, typed, words);
    toFallback(L);
  }
  lua_pop(L, 1);
}

/// The same in a protected call: a lack of memory must not leave it.
int collect(lua_State* L) {
  const auto& typed = *static_cast<const Typed*>(lua_touserdata(L, 1));
  auto& words = *static_cast<std::set<std::string>*>(lua_touserdata(L, 2));
  lua_pushglobaltable(L);
  for (const std::string& name : typed.path) toField(L, name);
  addFields(L, typed, words);
  if (!typed.path.empty()) return 0;
  for (const std::string_view word : kReserved) {
    if (startsWith(word, typed.beginning)) words.emplace(word);
  }
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

Completions complete(lua_State* L, std::string_view beforeCursor) {
  const Typed typed = typedAt(beforeCursor);
  std::set<std::string> words;
  lua_pushcfunction(L, collect);
  lua_pushlightuserdata(L, const_cast<Typed*>(&typed));
  lua_pushlightuserdata(L, &words);
  if (lua_pcall(L, 2, 0, 0) != LUA_OK) {
    lua_pop(L, 1);
    words.clear();
  }
  return {typed.beginning.size(), {words.begin(), words.end()}};
}

}  // namespace desk::repl
