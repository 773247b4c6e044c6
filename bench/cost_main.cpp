// What reads and answers cost in instructions, for callgrind: it dumps its counts after each part,
// under the part's name. Prints a line per part, "NAME COUNT": how many pieces it read or how many
// rows it answered. Without callgrind it only prints.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <ctime>
#include <lua.hpp>
#include <memory>

#include "bench/jobs.h"
#include "module/query_commands.h"
#include "module/readers.h"

namespace {

constexpr int kPieces = 400;

/// Rows of equal keys cost more or less by where a state's hash seed puts them: many states give
/// the mean.
constexpr int kStates = 24;

std::time_t now = 0;

template <class Run>
void count(Run&& run) {
  CALLGRIND_TOGGLE_COLLECT;
  run();
  CALLGRIND_TOGGLE_COLLECT;
}

void report(const char* name, long long count) {
  CALLGRIND_DUMP_STATS_AT(name);
  CALLGRIND_ZERO_STATS;
  std::printf("%s %lld\n", name, count);
}

void reportJsonRead(const char* name, bool secondSpelling) {
  bench::Shape shape;
  shape.pieces = kPieces;
  shape.secondSpelling = secondSpelling;
  const Json::Value document = bench::parsedJson(bench::jsonJob(shape));
  JsonAnalysis reader;
  count([&] { bench::readJson(reader, document); });
  report(name, kPieces);
}

void reportXmlRead(const char* name) {
  bench::Shape shape;
  shape.pieces = kPieces;
  const auto document = bench::parsedXml(bench::xmlJob(shape));
  XmlAnalysis reader;
  count([&] { reader.analysisData(document->RootElement()); });
  report(name, kPieces);
}

void reportRows(const char* name, lua_CFunction command, bool distinctWorks = false) {
  bench::Shape shape;
  shape.pieces = kPieces;
  shape.distinctWorks = distinctWorks;
  bench::makeCurrent(shape);
  long long rows = 0;
  for (int i = 0; i < kStates; ++i) {
    ++now;
    const std::unique_ptr<lua_State, decltype(&lua_close)> state(luaL_newstate(), &lua_close);
    lua_State* const L = state.get();
    lua_gc(L, LUA_GCSTOP, 0);
    lua_pushcfunction(L, command);
    lua_pushstring(L, "");
    count([&] { lua_call(L, 1, 1); });
    rows += luaL_len(L, -1);
  }
  report(name, rows);
}

}  // namespace

/// Takes the place of the C library's clock, from which script states draw their hash seeds.
extern "C" std::time_t time(std::time_t* result) noexcept {
  if (result != nullptr) *result = now;
  return now;
}

int main() {
  reportJsonRead("json_read", false);
  reportJsonRead("json_read_second_spelling", true);
  reportXmlRead("xml_read");
  reportRows("works", getWorkCommand);
  reportRows("cuts", getCutCommand);
  reportRows("labels", getPrintCommand);
  reportRows("holes", getHoleCommand, true);
  return 0;
}
