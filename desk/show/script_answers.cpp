#include "desk/show/script_answers.h"

#include <cstdlib>

#include "desk/base/errors.h"
#include "desk/base/numbers.h"
#include "module/script_rows.h"

namespace desk::show {

namespace {

template <class Row>
std::vector<std::string> namesOf(std::size_t leftOut = 0) {
  std::vector<std::string> names;
  for (const auto& key : script_rows::KeysOf<Row>::keys) names.emplace_back(key.key);
  names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(leftOut));
  return names;
}

// What a bar's row takes from the first cut and the first label of the bar.
const std::vector<std::string> kFromCut = {"BarNumber", "BarName", "Length", "CutNumBer"};
const std::vector<std::string> kFromLabel = {"sProfileName", "sColor", "sLengthProduct"};

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

const Cell& cellOf(const TextTable& table, std::size_t row, const std::string& key) {
  std::size_t column = 0;
  while (table.keys.at(column) != key) ++column;
  return table.rows.at(row).at(column);
}

}  // namespace

std::vector<std::string> keysOf(const Question& question) {
  using namespace script_rows;
  std::vector<std::string> barKeys = kFromCut;
  switch (question.subject) {
    case Subject::Bars:
      barKeys.insert(barKeys.end(), kFromLabel.begin(), kFromLabel.end());
      return barKeys;
    case Subject::Works:
      return namesOf<Work>(question.barCode.empty() ? 0 : KeysOf<Work>::optional);
    case Subject::Cuts:
      return namesOf<Cut>();
    case Subject::Holes:
      return namesOf<Hole>();
    case Subject::Labels:
      return namesOf<Label>();
    case Subject::Dimensions:
      break;
  }
  return namesOf<Dimensions>();
}

TextTable ask(script::ScriptEngine& engine, const Question& question) {
  const auto rows = [&](const char* function, const std::string* argument) {
    return rowsOf(engine.state(), function, argument, keysOf(question));
  };
  switch (question.subject) {
    case Subject::Bars:
      return barsOf(ask(engine, {Subject::Cuts, "", ""}), ask(engine, {Subject::Labels, "", ""}));
    case Subject::Works:
      return rows("get_work", &question.barCode);
    case Subject::Cuts:
      return rows("get_cut", &question.bar);
    case Subject::Holes:
      return rows("get_hole", nullptr);
    case Subject::Labels:
      return rows("get_print", nullptr);
    case Subject::Dimensions:
      break;
  }
  return rows("get_Dimensions", &question.barCode);
}

TextTable barsOf(const TextTable& cuts, const TextTable& labels) {
  TextTable table{keysOf({Subject::Bars, "", ""}), {}};
  // Cuts and labels come in the same order, one of each per piece, and a cut says how many pieces
  // its bar holds.
  for (std::size_t i = 0; i < cuts.rows.size();) {
    std::vector<Cell> row;
    row.reserve(table.keys.size());
    for (const std::string& key : kFromCut) row.push_back(cellOf(cuts, i, key));
    for (const std::string& key : kFromLabel) row.push_back(cellOf(labels, i, key));
    table.rows.push_back(row);
    i += std::strtoul(cellOf(cuts, i, "CutNumBer").text.c_str(), nullptr, 10);
  }
  return table;
}

}  // namespace desk::show
