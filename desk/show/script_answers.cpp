#include "desk/show/script_answers.h"

#include <cstdlib>

#include "desk/base/errors.h"
#include "desk/base/number_text.h"
#include "module/script_rows.h"

namespace desk::show {

namespace {

constexpr char kModule[] = "cus_ParseModule";

/// The keys of a row, but for the first ones.
template <class Row>
std::vector<std::string> keysOf(std::size_t leftOut = 0) {
  std::vector<std::string> names;
  for (const auto& key : script_rows::KeysOf<Row>::keys) names.emplace_back(key.key);
  names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(leftOut));
  return names;
}

/// Calls a module function with at most one text and leaves its result on the stack.
void call(lua_State* L, const char* function, const std::string* argument) {
  lua_settop(L, 0);
  lua_getglobal(L, kModule);
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

Table rowsOf(lua_State* L, const char* function, const std::string* argument,
             const std::vector<std::string>& keys) {
  call(L, function, argument);
  Table table{keys, {}};
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

Table works(lua_State* L, const std::string& barCode) {
  using script_rows::Work;
  const std::size_t leftOut = barCode.empty() ? 0 : script_rows::KeysOf<Work>::optional;
  return rowsOf(L, "get_work", &barCode, keysOf<Work>(leftOut));
}

Table cuts(lua_State* L, const std::string& bar) {
  return rowsOf(L, "get_cut", &bar, keysOf<script_rows::Cut>());
}

Table labels(lua_State* L) {
  return rowsOf(L, "get_print", nullptr, keysOf<script_rows::Label>());
}

Table holes(lua_State* L) {
  return rowsOf(L, "get_hole", nullptr, keysOf<script_rows::Hole>());
}

Table dimensions(lua_State* L, const std::string& barCode) {
  return rowsOf(L, "get_Dimensions", &barCode, keysOf<script_rows::Dimensions>());
}

const Cell& cellOf(const Table& table, std::size_t row, const std::string& key) {
  std::size_t column = 0;
  while (table.keys.at(column) != key) ++column;
  return table.rows.at(row).at(column);
}

/// Cuts and labels come in the same order, one of each per piece, and a cut says how many pieces
/// its bar holds.
Table bars(lua_State* L, const std::string& bar) {
  const Table allCuts = cuts(L, "");
  const Table allLabels = labels(L);
  const std::vector<std::string> fromCut = {"BarNumber", "BarName", "Length", "CutNumBer"};
  const std::vector<std::string> fromLabel = {"sProfileName", "sColor", "sLengthProduct"};
  Table table{fromCut, {}};
  table.keys.insert(table.keys.end(), fromLabel.begin(), fromLabel.end());
  for (std::size_t i = 0; i < allCuts.rows.size();) {
    std::vector<Cell> row;
    row.reserve(table.keys.size());
    for (const std::string& key : fromCut) row.push_back(cellOf(allCuts, i, key));
    for (const std::string& key : fromLabel) row.push_back(cellOf(allLabels, i, key));
    if (bar.empty() || row.front().text == bar) table.rows.push_back(row);
    i += std::strtoul(cellOf(allCuts, i, "CutNumBer").text.c_str(), nullptr, 10);
  }
  return table;
}

}  // namespace

void loadJob(script::ScriptEngine& engine, const std::string& name) {
  lua_State* L = engine.state();
  call(L, "getjson_Flash", &name);
  lua_getfield(L, -1, "errorCode");
  lua_getfield(L, -2, "info");
  const lua_Integer code = lua_tointeger(L, -2);
  if (code == 0) return;
  throw Error(kExitCannot, "cannot load " + name + ": " + lua_tostring(L, -1) + " (errorCode " +
                               std::to_string(code) + ")");
}

Table ask(script::ScriptEngine& engine, const Question& question) {
  lua_State* L = engine.state();
  switch (question.subject) {
    case Subject::Bars:
      return bars(L, question.bar);
    case Subject::Works:
      return works(L, question.barCode);
    case Subject::Cuts:
      return cuts(L, question.bar);
    case Subject::Holes:
      return holes(L);
    case Subject::Labels:
      return labels(L);
    case Subject::Dimensions:
      break;
  }
  return dimensions(L, question.barCode);
}

}  // namespace desk::show
