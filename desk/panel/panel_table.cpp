#include "desk/panel/panel_table.h"

#include <algorithm>
#include <climits>

namespace desk::panel {

namespace {

constexpr char kTableKey[] = "cusdesk.panel";      ///< in the registry
constexpr char kRowsKey[] = "cusdesk.panel.rows";  ///< in the registry

/// Memory for the texts of a page, or of the head. A text far to the right has thousands of empty
/// ones before it.
constexpr int kMostMiB = 64;
constexpr std::size_t kMostBytes = std::size_t{kMostMiB} << 20;

unsigned short checkCount(lua_State* L, int argument) {
  const lua_Integer count = luaL_checkinteger(L, argument);
  luaL_argcheck(L, count >= 0 && count <= USHRT_MAX, argument, "0 to 65535 expected");
  return static_cast<unsigned short>(count);
}

/// At most the first `count` texts of the list on top of the stack, up to the last that is not nil;
/// "" for nil in between, and no text for anything but a list.
/// @param room bytes that texts may still take; a script error where that is too little
std::vector<std::string> texts(lua_State* L, std::size_t count, std::size_t& room) {
  std::vector<std::string> list;
  if (!lua_istable(L, -1)) return list;
  for (std::size_t position = 1; position <= count; ++position) {
    if (lua_geti(L, -1, static_cast<lua_Integer>(position)) != LUA_TNIL) {  // list, value
      std::size_t size = 0;
      const char* bytes = luaL_tolstring(L, -1, &size);  // list, value, text
      const std::size_t needed = (position - list.size()) * sizeof(std::string) + size;
      if (needed > room) luaL_error(L, "the texts to show take more than %d MiB", kMostMiB);
      room -= needed;
      list.resize(position);
      list.back().assign(bytes, size);
      lua_pop(L, 1);
    }
    lua_pop(L, 1);
  }
  return list;
}

/// The rows `first` to `last`, in ascending order, from what the script gave to panel.rows.
std::vector<std::vector<std::string>> fetch(lua_State* L, int first, int last, std::size_t cols) {
  lua_Integer before = 0;
  if (lua_getfield(L, LUA_REGISTRYINDEX, kRowsKey) == LUA_TFUNCTION) {
    lua_pushinteger(L, first);
    lua_pushinteger(L, last);
    lua_call(L, 2, 1);
    if (!lua_istable(L, -1)) luaL_error(L, "the function given to panel.rows returned no list");
    before = lua_Integer{first} - 1;
  }
  std::vector<std::vector<std::string>> rows;
  std::size_t room = kMostBytes;
  for (lua_Integer row = first; row <= last && lua_istable(L, -1); ++row) {
    lua_geti(L, -1, row - before);  // rows, row
    rows.push_back(texts(L, cols, room));
    lua_pop(L, 1);
  }
  lua_pop(L, 1);
  return rows;
}

void setField(lua_State* L, const char* key, const std::string& text) {
  if (text.empty()) return;
  lua_pushstring(L, text.c_str());
  lua_setfield(L, -2, key);
}

void setField(lua_State* L, const char* key, int number) {
  lua_pushinteger(L, number);
  lua_setfield(L, -2, key);
}

int grid(lua_State* L) {
  const unsigned short rows = checkCount(L, 1);
  const unsigned short cols = checkCount(L, 2);
  const char* widths = luaL_optstring(L, 3, "");
  ScriptContext& self = contextOf(L);
  const bool taken = self.part.setCell(rows, cols, widths);
  luaL_argcheck(L, taken, 3, "one digit for each column with ':' between them expected");
  self.columns = cols;
  return 0;
}

int head(lua_State* L) {
  luaL_checktype(L, 1, LUA_TTABLE);
  lua_settop(L, 1);
  const lua_Integer count = std::clamp<lua_Integer>(luaL_len(L, 1), 0, USHRT_MAX);
  ScriptContext& self = contextOf(L);
  std::size_t room = kMostBytes;
  self.part.drawHead(texts(L, static_cast<std::size_t>(count), room));
  self.refreshIsDue = true;
  return 0;
}

int order(lua_State* L) {
  const lua_Integer order = luaL_checkinteger(L, 1);
  luaL_argcheck(L, order == 0 || order == 1, 1, "0 or 1 expected");
  contextOf(L).part.setOrder(static_cast<unsigned short>(order));
  return 0;
}

int rows(lua_State* L) {
  const bool usable = lua_istable(L, 1) || lua_isfunction(L, 1);
  luaL_argcheck(L, usable, 1, "list or function expected");
  lua_settop(L, 1);
  lua_setfield(L, LUA_REGISTRYINDEX, kRowsKey);
  return 0;
}

/// Shows the current page: asks the part for its rows, fetches them and hands them over.
void show(lua_State* L, unsigned short total) {
  ScriptContext& self = contextOf(L);
  int first = 1;
  int last = 0;
  if (!self.part.update(total, first, last) && total != 0) {
    luaL_error(L, "the table has no rows to show: call panel.grid first");
  }
  self.total = total;
  std::vector<std::vector<std::string>> rows;
  if (total != 0) rows = fetch(L, first, last, self.columns);
  TablePart::Rows pointers;
  for (std::vector<std::string>& row : rows) pointers.push_back(&row);
  self.refreshIsDue = !self.part.setBody(pointers);
}

int update(lua_State* L) {
  lua_settop(L, 1);
  if (lua_isnil(L, 1) && lua_getfield(L, LUA_REGISTRYINDEX, kRowsKey) == LUA_TTABLE) {
    lua_pushinteger(L, luaL_len(L, -1));
    lua_replace(L, 1);
  }
  show(L, checkCount(L, 1));
  return 0;
}

/// Turns the page in the direction that argument 1 names.
bool turned(lua_State* L) {
  static const char* const kDirections[] = {"up", "down", nullptr};
  TablePart& part = contextOf(L).part;
  return luaL_checkoption(L, 1, nullptr, kDirections) == 0 ? part.pageUp() : part.pageDown();
}

int page(lua_State* L) {
  if (!lua_isnoneornil(L, 1)) {
    lua_pushboolean(L, turned(L));
    return 1;
  }
  const Page page = contextOf(L).part.page();
  lua_pushinteger(L, page.current);
  lua_pushinteger(L, page.count);
  return 2;
}

int index(lua_State* L) {
  const std::optional<int> index = contextOf(L).part.index();
  index ? lua_pushinteger(L, *index) : lua_pushnil(L);
  return 1;
}

int reset(lua_State* L) {
  ScriptContext& self = contextOf(L);
  self.part.reset();
  self.columns = 0;
  self.total = 0;
  lua_pushnil(L);
  lua_setfield(L, LUA_REGISTRYINDEX, kRowsKey);
  return 0;
}

const luaL_Reg kFunctions[] = {
    {"grid", grid}, {"head", head},   {"order", order}, {"rows", rows},     {"update", update},
    {"page", page}, {"index", index}, {"reset", reset}, {nullptr, nullptr},
};

}  // namespace

ScriptContext& contextOf(lua_State* L) {
  return **static_cast<ScriptContext**>(lua_getextraspace(L));
}

void installPanelTable(lua_State* L, ScriptContext& context, const PanelFacts& facts) {
  *static_cast<ScriptContext**>(lua_getextraspace(L)) = &context;
  luaL_newlib(L, kFunctions);
  setField(L, "job", facts.job);
  setField(L, "width", facts.width);
  setField(L, "height", facts.height);
  lua_pushvalue(L, -1);
  lua_setfield(L, LUA_REGISTRYINDEX, kTableKey);
  lua_setglobal(L, "panel");
}

void pushPanelTable(lua_State* L) {
  lua_getfield(L, LUA_REGISTRYINDEX, kTableKey);
}

int turnPage(lua_State* L) {
  const unsigned short total = contextOf(L).total;
  if (total != 0 && turned(L)) show(L, total);
  return 0;
}

}  // namespace desk::panel
