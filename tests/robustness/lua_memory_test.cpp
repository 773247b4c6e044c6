// A script state whose memory runs out: during each command the limit is raised step by step until
// the command succeeds. Each time the script gets Lua's own error, what the command holds is freed
// on the way out, and the next call answers as ever.
#include "fuzz/job_text.h"
#include "module/readers.h"
#include "module/registration.h"
#include "tests/desk/host/host_test.h"
#include "tests/support/counting_heap.h"
#include "tests/support/lua_show.h"
#include "tests/support/made_jobs.h"

#include <lua.hpp>

namespace {

/// What a state may have, and has.
struct Budget {
  std::size_t used = 0;
  std::size_t most = SIZE_MAX;
};

void* allocate(void* data, void* block, std::size_t before, std::size_t after) {
  Budget& budget = *static_cast<Budget*>(data);
  const std::size_t owned = block == nullptr ? 0 : before;
  if (after > owned && budget.used - owned + after > budget.most) return nullptr;
  void* const next = after == 0 ? nullptr : std::realloc(block, after);
  if (after == 0) std::free(block);
  if (after != 0 && next == nullptr) return nullptr;
  budget.used += after - owned;
  return next;
}

constexpr const char* kCalls[] = {
    "getjson_Flash('a.json')",
    "getjson_uDisk('a.json')",
    "getjson_url('ftp://x/', 'a')",
    "get_work('')",
    "get_work('a')",
    "get_cut('')",
    "get_cut('7')",
    "get_hole()",
    "get_print()",
    "get_Dimensions('a')",
    "save_cutCurIndex('1', '2')",
    "getjson_Flash('a.xml')",
    "get_work('')",
    "get_cut('')",
    "get_print()",
    "get_Dimensions('a')",
};

class LuaMemory : public HostTest {
 protected:
  LuaMemory() {
    const std::string flash = "root/mnt/data/CustomFileDir/";
    tree.write(flash + "JsonFile/a.json", made_jobs::json({}));
    tree.write("usb/json/a.json", made_jobs::json({}));
    tree.write(flash + "XmlFile/a.xml", made_jobs::xml({}));
    ::setenv("CUS_CUTCURINDEX_FILE", tree.path("progress.txt").c_str(), 1);
    desk::setLogSink([](const std::string&) {});
    testing::internal::CaptureStdout();
    L = lua_newstate(allocate, &budget);
    luaL_openlibs(L);
    reg_cus_ParseModule(L);
    EXPECT_EQ(luaL_dostring(L, kShow), LUA_OK);
  }
  ~LuaMemory() override {
    lua_close(L);
    const std::string output = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::fputs(output.c_str(), stderr);
    EXPECT_EQ(budget.used, 0U);
  }

  /// Compiles "return cus_ParseModule.CALL" and keeps it as the global "call".
  void prepare(const std::string& call) {
    ASSERT_EQ(luaL_loadstring(L, ("return cus_ParseModule." + call).c_str()), LUA_OK);
    lua_setglobal(L, "call");
  }

  /// Calls it with `room` bytes more than are in use now. Leaves an answer on the stack.
  int callWith(std::size_t room) {
    lua_settop(L, 0);
    lua_getglobal(L, "call");
    lua_gc(L, LUA_GCCOLLECT, 0);
    budget.most = room == SIZE_MAX ? room : budget.used + room;
    const int status = lua_pcall(L, 0, 1, 0);
    budget.most = SIZE_MAX;
    return status;
  }

  std::string answer() {
    EXPECT_EQ(callWith(SIZE_MAX), LUA_OK);
    lua_getglobal(L, "show");
    lua_insert(L, 1);
    EXPECT_EQ(lua_pcall(L, 1, 1, 0), LUA_OK);
    const std::string text = lua_tostring(L, -1);
    lua_settop(L, 0);
    lua_gc(L, LUA_GCCOLLECT, 0);
    return text;
  }

  /// What lives on the heap outside of Lua.
  long long outside() const {
    const long long used = counting_heap::countsMalloc() ? static_cast<long long>(budget.used) : 0;
    return counting_heap::live().bytes - used;
  }

  Budget budget;
  lua_State* L = nullptr;
};

}  // namespace

TEST_F(LuaMemory, CommandsRecoverFromEveryLimit) {
  constexpr std::size_t kStep = 16;  // the least that Lua asks for at a time: none is passed over
  int limits = 0;
  for (const char* call : kCalls) {
    prepare(call);
    const std::string expected = answer();
    callWith(0);  // what a library keeps after a first failure is nobody's leak
    answer();
    const long long before = outside();
    for (std::size_t room = 0; callWith(room) != LUA_OK; room += kStep, ++limits) {
      ASSERT_EQ(std::string(lua_tostring(L, -1)), "not enough memory") << call << " " << room;
      ASSERT_EQ(answer(), expected) << call << " " << room;
    }
    ASSERT_EQ(answer(), expected) << call;
    EXPECT_EQ(outside(), before) << call;
  }
  std::fprintf(stderr, "commands: %d limits of Lua's memory met\n", limits);
  EXPECT_GT(limits, 1000);
}
