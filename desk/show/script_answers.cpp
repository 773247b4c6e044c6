#include "desk/show/script_answers.h"

#include "desk/base/errors.h"
#include "desk/base/numbers.h"

namespace desk::show {

namespace {

/// Calls a module function with at most one text and leaves its result on the stack.
void call(lua_State* L, const char* function, const std::string* argument) {
  lua_settop(L, 0);
  lua_getglobal(L, script::kModule);
  lua_getfield(L, -1, function);
  if (argument != nullptr) lua_pushlstring(L, argument->data(), argument->size());
  if (lua_pcall(L, argument == nullptr ? 0 : 1, 1, 0) == LUA_OK) return;
  const char* message = lua_tostring(L, -1);
  throw Raised(function, message == nullptr ? "unknown error" : message);
}

/// The value on top of the stack, which is popped.
Cell takeCell(lua_State* L) {
  Cell cell;
  cell.isNumber = lua_type(L, -1) == LUA_TNUMBER;
  if (cell.isNumber) {
    cell.number = lua_tonumber(L, -1);
    cell.text = shortestText(cell.number);
  } else if (const char* text = lua_tostring(L, -1)) {
    cell.text = text;
  }
  lua_pop(L, 1);
  return cell;
}

TextTable rowsOf(lua_State* L, const char* function, const std::string* argument,
                 const std::vector<std::string>& keys) {
  call(L, function, argument);
  TextTable table{keys, {}};
  const lua_Integer count = luaL_len(L, -1);
  for (lua_Integer i = 1; i <= count; ++i) {
    lua_geti(L, -1, i);
    std::vector<Cell>& row = table.rows.emplace_back();
    for (const std::string& key : keys) {
      lua_getfield(L, -1, key.c_str());
      row.push_back(takeCell(L));
    }
    lua_pop(L, 1);
  }
  return table;
}

/// What the command is given; null for nothing.
const std::string* argumentOf(const Question& question) {
  switch (question.subject) {
    case Subject::Works:
    case Subject::Dimensions:
      return &question.barCode;
    case Subject::Cuts:
      return &question.bar;
    default:
      return nullptr;
  }
}

}  // namespace

TextTable ask(script::ScriptEngine& engine, const Question& question) {
  if (question.subject == Subject::Bars) {
    return barsOf(ask(engine, {Subject::Cuts, "", ""}), ask(engine, {Subject::Labels, "", ""}));
  }
  return rowsOf(engine.state(), commandFor(question.subject), argumentOf(question),
                keysOf(question));
}

}  // namespace desk::show
