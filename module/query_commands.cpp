#include "module/query_commands.h"

#include <lua.hpp>

#include "module/job_rows.h"
#include "module/lua_rows.h"
#include "module/readers.h"
#include "module/running_queries.h"

// Arguments are read before the first object with a destructor is alive: on a host whose Lua is
// built as C an argument error jumps over destructors.
//
// What a query reads is settled before its result table is made: from then on script code may run,
// and what it loads or asks changes the readers.

namespace {

using model::JobView;

/// Answers with the rows that `make(job, rows)` makes of the current job.
template <class Make>
int answer(lua_State* L, Make make) {
  const DATA_T* const current = currentJob();
  const JobView job = current == nullptr ? JobView() : JobView(*current);
  LuaRows rows(L);
  if (current != nullptr) make(job, rows);
  return 1;
}

int works(lua_State* L, const char* argument) {
  const std::string barCode = argument;
  return answer(L, [&](const JobView& job, LuaRows& rows) { job_rows::works(job, barCode, rows); });
}

int cuts(lua_State* L, const char* argument) {
  job_rows::Cuts found(currentJob(), argument, json);
  found.forEach(LuaRows(L));
  return 1;
}

int holes(lua_State* L, const char*) {
  std::vector<model::HoleRow> found;
  if (currentJob() == &json.data) model::collectHoles(json.data, found, json.holeList);
  model::forEachHole(found, LuaRows(L));
  return 1;
}

int labels(lua_State* L, const char*) {
  return answer(L, [](const JobView& job, LuaRows& rows) { model::forEachLabel(job, rows); });
}

int dimensions(lua_State* L, const char* argument) {
  const std::string barCode = argument;
  return answer(
      L, [&](const JobView& job, LuaRows& rows) { job_rows::dimensions(job, barCode, rows); });
}

}  // namespace

int getWorkCommand(lua_State* L) {
  return running_queries::run(L, luaL_checklstring(L, 1, nullptr), works);
}

int getCutCommand(lua_State* L) {
  return running_queries::run(L, luaL_checklstring(L, 1, nullptr), cuts);
}

int getHoleCommand(lua_State* L) {
  return running_queries::run(L, nullptr, holes);
}

int getPrintCommand(lua_State* L) {
  return running_queries::run(L, nullptr, labels);
}

int getDimensionsCommand(lua_State* L) {
  return running_queries::run(L, luaL_checklstring(L, 1, nullptr), dimensions);
}
