// What reads and answers cost in instructions, for those who count them:
//   cuscost [PART [prepare]]
// Prints a line per part, "NAME COUNT": how many pieces it read or how many rows it answered.
// Callgrind dumps its counts after each part, under the part's name. A counter that knows whole
// programs only runs a part with and without "prepare", which stops short of what counts.
#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_TOGGLE_COLLECT
#define CALLGRIND_DUMP_STATS_AT(name)
#define CALLGRIND_ZERO_STATS
#endif

#include <cstdio>
#include <ctime>
#include <lua.hpp>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/jobs.h"
#include "module/query_commands.h"
#include "module/readers.h"

namespace {

constexpr int kPieces = 400;      ///< of a job that is read
constexpr int kQueryPieces = 80;  ///< of a job that is asked

/// Rows of equal keys cost more or less by where a state's hash seed puts them, and texts by their
/// addresses, from which Lua's cache of texts picks their places. Many states give the mean, each
/// with a copy of the job elsewhere on the heap and with a stack that begins elsewhere.
constexpr int kStates = 100;

std::time_t now = 0;
bool onlyPrepares = false;

template <class Run>
void count(Run&& run) {
  if (onlyPrepares) return;
  CALLGRIND_TOGGLE_COLLECT;
  run();
  CALLGRIND_TOGGLE_COLLECT;
}

long long readJson(bool secondSpelling) {
  bench::Shape shape;
  shape.pieces = kPieces;
  shape.secondSpelling = secondSpelling;
  const Json::Value document = bench::parsedJson(bench::jsonJob(shape));
  JsonAnalysis reader;
  count([&] { bench::readJson(reader, document); });
  return kPieces;
}

long long readXml() {
  bench::Shape shape;
  shape.pieces = kPieces;
  const auto document = bench::parsedXml(bench::xmlJob(shape));
  XmlAnalysis reader;
  count([&] { reader.analysisData(document->RootElement()); });
  return kPieces;
}

/// Calls the function on the Lua stack with one argument, `room` bytes deeper in the stack.
__attribute__((noinline)) void callDeeper(lua_State* L, std::size_t room) {
  volatile char* const unused = static_cast<char*>(__builtin_alloca(room + 1));
  *unused = 0;
  lua_call(L, 1, 1);
}

long long answer(lua_CFunction command, bool distinctWorks) {
  bench::Shape shape;
  shape.pieces = kQueryPieces;
  shape.distinctWorks = distinctWorks;
  bench::makeCurrent(shape);
  std::vector<DATA_T> copies;
  long long rows = 0;
  for (int i = 0; i < kStates; ++i) {
    ++now;
    copies.push_back(json.data);
    std::swap(json.data, copies.back());
    const std::unique_ptr<lua_State, decltype(&lua_close)> state(luaL_newstate(), &lua_close);
    lua_State* const L = state.get();
    lua_gc(L, LUA_GCSTOP, 0);
    lua_pushcfunction(L, command);
    lua_pushstring(L, "");
    count([&] {
      callDeeper(L, 16 * static_cast<std::size_t>(i));
      rows += luaL_len(L, -1);
    });
  }
  std::swap(json.data, copies.front());
  return rows;
}

struct Part {
  const char* name;
  long long (*run)();
};

constexpr Part kParts[] = {
    {"json_read", [] { return readJson(false); }},
    {"json_read_second_spelling", [] { return readJson(true); }},
    {"xml_read", readXml},
    {"works", [] { return answer(getWorkCommand, false); }},
    {"cuts", [] { return answer(getCutCommand, false); }},
    {"labels", [] { return answer(getPrintCommand, false); }},
    {"holes", [] { return answer(getHoleCommand, true); }},
};

}  // namespace

/// Takes the place of the C library's clock, from which script states draw their hash seeds.
extern "C" std::time_t time(std::time_t* result) noexcept {
  if (result != nullptr) *result = now;
  return now;
}

int main(int argc, char** argv) {
  const std::string wanted = argc > 1 ? argv[1] : "";
  onlyPrepares = argc > 2;
  for (const Part& part : kParts) {
    if (!wanted.empty() && wanted != part.name) continue;
    const long long count = part.run();
    CALLGRIND_DUMP_STATS_AT(part.name);
    CALLGRIND_ZERO_STATS;
    std::printf("%s %lld\n", part.name, count);
  }
  return 0;
}
