#include <lua.hpp>
#include <memory>

#include "bench/cases.h"
#include "bench/flat_rows.h"
#include "bench/jobs.h"
#include "bench/scan.h"
#include "module/job_rows.h"
#include "module/query_commands.h"
#include "module/readers.h"

namespace bench {
namespace {

/// The script state of all cases. Its collector runs between them only, where it can take all that
/// the last one left.
lua_State* script() {
  static const std::unique_ptr<lua_State, decltype(&lua_close)> state(luaL_newstate(), &lua_close);
  return state.get();
}

/// An emptied script state with the shape's job behind it.
lua_State* freshScript(const Shape& shape) {
  lua_State* const L = script();
  lua_settop(L, 0);
  lua_gc(L, LUA_GCCOLLECT, 0);
  lua_gc(L, LUA_GCSTOP, 0);
  makeCurrent(shape);
  return L;
}

/// Calls a command as a script does.
int call(lua_State* L, lua_CFunction command, const char* argument) {
  lua_pushcfunction(L, command);
  if (argument == nullptr) {
    lua_call(L, 0, 1);
  } else {
    lua_pushstring(L, argument);
    lua_call(L, 1, 1);
  }
  return lua_gettop(L);
}

struct Query {
  const char* name;
  lua_CFunction command;
  const char* argument;
};

constexpr Query kQueries[] = {
    {"works", getWorkCommand, ""},
    {"cuts", getCutCommand, ""},
    {"labels", getPrintCommand, nullptr},
    {"holes", getHoleCommand, nullptr},
};

void addCommand(const std::string& name, const Query& query, const Shape& shape) {
  addCase(
      name, iterationsFor(shape.pieces), [=] { return freshScript(shape); },
      [=](lua_State* L) { return call(L, query.command, query.argument); });
}

/// The cuts as they are asked for first after a load, when no map of barcodes is there yet.
void addFirstCuts(const std::string& name, const Shape& shape) {
  addCase(
      name, iterationsFor(shape.pieces),
      [=] {
        lua_State* const L = freshScript(shape);
        json.barCodeMap.clear();
        return L;
      },
      [=](lua_State* L) { return call(L, getCutCommand, ""); });
}

/// @param make  hands the rows of the JSON reader's job to a sink
template <class Row, class Make>
void addFloor(const std::string& name, const Shape& shape, Make make) {
  const auto rows = std::make_shared<std::unique_ptr<FlatRows<Row>>>();
  addCase(
      name, iterationsFor(shape.pieces),
      [=] {
        lua_State* const L = freshScript(shape);
        if (*rows == nullptr) *rows = std::make_unique<FlatRows<Row>>(make);
        return L;
      },
      [=](lua_State* L) {
        (*rows)->push(L);
        return 0;
      });
}

constexpr auto makeWorks = [](auto& sink) { job_rows::works(json.data, "", sink); };
constexpr auto makeCuts = [](auto& sink) { job_rows::Cuts(&json.data, "", json).forEach(sink); };
constexpr auto makeLabels = [](auto& sink) { model::forEachLabel(json.data, sink); };

void addBarCode(const std::string& name, const Shape& shape) {
  const std::string barCode = barCodeOf(shape.pieces / 2);
  addCase(
      name + "command", 20, [=] { return freshScript(shape); },
      [=](lua_State* L) { return call(L, getWorkCommand, barCode.c_str()); });
  addCase(
      name + "scan", 1,
      [=] {
        lua_State* const L = freshScript(shape);
        pushScan(L, jsonDocumentOf(shape));
        return L;
      },
      [=](lua_State* L) {
        lua_pushstring(L, barCode.c_str());
        lua_call(L, 1, 1);
        return 0;
      });
}

}  // namespace

void addQueryCases() {
  for (const int pieces : {160, 1000, 8000, 10000, 80000, 100000}) {
    const std::string size = "/" + std::to_string(pieces) + "/";
    Shape shape;
    shape.pieces = pieces;
    for (const Query& query : kQueries) addCommand(query.name + size + "command", query, shape);
    addFloor<script_rows::Work>("works" + size + "floor", shape, makeWorks);
    addFloor<script_rows::Cut>("cuts" + size + "floor", shape, makeCuts);
    addFloor<script_rows::Label>("labels" + size + "floor", shape, makeLabels);
  }
  Shape shape;
  shape.pieces = 8000;
  addFirstCuts("cuts/8000/first", shape);
  addBarCode("barcode/8000/", shape);
  shape.distinctWorks = true;
  addCommand("distinct_holes/8000/command", kQueries[3], shape);
  addFloor<script_rows::Work>("distinct_works/8000/floor", shape, makeWorks);
}

}  // namespace bench
