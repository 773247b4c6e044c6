// Months of a panel in a minute: soak PLUGIN CYCLES
//
// A cycle loads the plug-in, lets a script state load jobs of all kinds, good and bad, and ask
// everything while a part draws, and unloads it. All cycles must leave the heap as it was after the
// first ones, to the byte, and no more resident memory.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "desk/base/output.h"
#include "desk/host/settings.h"
#include "desk/script/plugin.h"
#include "desk/script/script_engine.h"
#include "host/part_types.h"
#include "tests/support/counting_heap.h"
#include "tests/support/made_jobs.h"
#include "tests/support/temp_tree.h"

namespace {

constexpr int kJobs = 20;
constexpr long kSlackKiB = 1024;  ///< what the allocator may hold more of, for reasons of its own

constexpr char kRound[] = R"(
local job = cus_ParseModule
return function(name)
  local ok, answer = pcall(job.getjson_Flash, name)
  pcall(job.get_work, '') pcall(job.get_work, 'a')
  pcall(job.get_cut, '') pcall(job.get_cut, '7')
  pcall(job.get_hole) pcall(job.get_print) pcall(job.get_Dimensions, 'a')
  return ok and answer.errorCode or -99
end)";

long residentKiB() {
  long pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return pages * (::sysconf(_SC_PAGESIZE) / 1024);
}

std::string nameOf(int job) {
  return "job" + std::to_string(job) + (job % 2 == 0 ? ".json" : ".xml");
}

/// Jobs of growing size, every fifth of them broken off and every fifth with a bad number.
void writeJobs(const TempTree& tree) {
  const std::string flash = "mnt/data/CustomFileDir/";
  for (int job = 0; job < kJobs; ++job) {
    const bool isJson = job % 2 == 0;
    const made_jobs::Size size{1 + job % 4, 1 + job % 7, job % 3,
                               std::string(static_cast<std::size_t>(1 + job * 3), 'a')};
    std::string text = isJson ? made_jobs::json(size) : made_jobs::xml(size);
    if (job % 5 == 3) text.resize(text.size() / 2);
    if (job % 5 == 4) text.replace(isJson ? text.find("1.0") : text.find(">7<") + 1, 1, "x");
    tree.write(flash + (isJson ? "JsonFile/" : "XmlFile/") + nameOf(job), text);
  }
}

/// A part's life, from its creation to its end.
void usePart(const desk::script::Plugin& plugin) {
  tagPARTCALLBACKS part;
  plugin.find<int(tagPARTCALLBACKS*)>("Custom_SetFunPoint")(&part);
  void* const handle = part.create();
  tagPARTINFO info{{0, 0, 800, 480}};
  std::string svg;
  part.init(handle, &info);
  part.click(handle, 0, CLICKPART_CLICK, {10, 100}, nullptr);
  part.fillPartShowAttr(handle, svg, nullptr);
  part.plcRead(handle, nullptr);
  part.destroy(handle);
}

/// One cycle. Returns how many jobs loaded; -1 when the script cannot be run.
int cycle(const char* path) {
  const desk::script::Plugin plugin(path);
  const desk::script::ScriptEngine engine(plugin, desk::script::ModuleErrors::Guarded);
  const desk::script::ScriptEngine other(plugin, desk::script::ModuleErrors::Raw);
  luaL_dostring(other.state(), "cus_ParseModule.get_cut('')");
  lua_State* L = engine.state();
  if (luaL_dostring(L, kRound) != LUA_OK) return -1;
  int loaded = 0;
  for (int job = 0; job < kJobs; ++job) {
    lua_pushvalue(L, 1);
    lua_pushstring(L, nameOf(job).c_str());
    lua_call(L, 1, 1);
    if (lua_tointeger(L, -1) == 0) ++loaded;
    lua_settop(L, 1);
    usePart(plugin);
  }
  return loaded;
}

/// Whether a number of cycles ends with the memory that it began with.
bool soak(const char* path, int cycles) {
  const int loaded = cycle(path);
  for (int warm = 0; warm < 10; ++warm) cycle(path);
  const counting_heap::Live heap = counting_heap::live();
  const long resident = residentKiB();
  bool same = loaded > kJobs / 2 && loaded < kJobs;
  for (int i = 0; i < cycles; ++i) same = cycle(path) == loaded && same;
  const counting_heap::Live end = counting_heap::live();
  std::fprintf(stderr,
               "soak: %d loads of the plug-in, %d of jobs; heap %lld bytes in %lld blocks, before "
               "%lld in %lld; resident %ld KiB, before %ld\n",
               cycles, cycles * kJobs, end.bytes, end.blocks, heap.bytes, heap.blocks,
               residentKiB(), resident);
  return same && end == heap && residentKiB() <= resident + kSlackKiB;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const TempTree tree;
  writeJobs(tree);
  deskhost::settings().root = tree.path();
  desk::setLogSink([](const std::string&) {});
  if (std::freopen("/dev/null", "w", stdout) == nullptr) return 2;
  return soak(argv[1], std::atoi(argv[2])) ? 0 : 1;
}
