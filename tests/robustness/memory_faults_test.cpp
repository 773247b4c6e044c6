// Memory that runs out: every single allocation of each script command, Lua's or the plug-in's, and
// of each operation of the table part fails once, alone or with all that follow. Nothing crashes,
// nothing leaks, and the next call answers as ever.
#include <functional>

#include "fuzz/job_text.h"
#include "module/part_callbacks.h"
#include "module/readers.h"
#include "module/registration.h"
#include "part/table_part.h"
#include "tests/desk/host/host_test.h"
#include "tests/support/counting_heap.h"
#include "tests/support/lua_show.h"
#include "tests/support/made_jobs.h"

#include <lua.hpp>

namespace {

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

class MemoryFaults : public HostTest {
 protected:
  MemoryFaults() : L(luaL_newstate()) {
    const std::string flash = "root/mnt/data/CustomFileDir/";
    tree.write(flash + "JsonFile/a.json", made_jobs::json({}));
    tree.write("usb/json/a.json", made_jobs::json({}));
    tree.write(flash + "XmlFile/a.xml", made_jobs::xml({}));
    ::setenv("CUS_CUTCURINDEX_FILE", tree.path("progress.txt").c_str(), 1);
    desk::setLogSink([](const std::string&) {});
    testing::internal::CaptureStdout();
    luaL_openlibs(L);
    reg_cus_ParseModule(L);
    EXPECT_EQ(luaL_dostring(L, kShow), LUA_OK);
  }
  ~MemoryFaults() override {
    lua_close(L);
    const std::string output = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::fputs(output.c_str(), stderr);
  }

  /// Compiles "return cus_ParseModule.CALL" and keeps it as the global "call".
  void prepare(const std::string& call) {
    ASSERT_EQ(luaL_loadstring(L, ("return cus_ParseModule." + call).c_str()), LUA_OK);
    lua_setglobal(L, "call");
  }

  /// Leaves the answer on the stack.
  void call() {
    lua_settop(L, 0);
    lua_getglobal(L, "call");
    status = lua_pcall(L, 0, 1, 0);
  }

  /// The answer as text, and then the job that is current.
  std::string answer() {
    call();
    EXPECT_EQ(status, LUA_OK);
    lua_getglobal(L, "show");
    lua_insert(L, 1);
    EXPECT_EQ(lua_pcall(L, 1, 1, 0), LUA_OK);
    const std::string text = lua_tostring(L, -1);
    lua_settop(L, 0);
    lua_gc(L, LUA_GCCOLLECT, 0);
    return text + fuzzing::textOf(*currentJob());
  }

  /// Bytes on the heap but Lua's own: its tables may grow.
  long long outside() const {
    const int lua = lua_gc(L, LUA_GCCOUNT, 0) * 1024 + lua_gc(L, LUA_GCCOUNTB, 0);
    return counting_heap::live().bytes - (counting_heap::countsMalloc() ? lua : 0);
  }

  /// Runs `act` again and again, each time with another allocation failing, until none does. After
  /// each, `recover` must bring the heap back to the byte. Returns how many allocations failed.
  int failEachAllocation(bool all, const std::function<void()>& act,
                         const std::function<void()>& recover) {
    long long before = 0;
    for (int count = 0;; ++count) {
      counting_heap::failAfter(static_cast<unsigned long long>(count), all);
      try {
        act();
      } catch (const std::bad_alloc&) {
        // what an allocation that failed may bring about, and nothing else
      }
      const bool failed = counting_heap::stopFailing();
      recover();
      if (!failed) return count;
      // What the libraries keep for good after a first failure is nobody's leak.
      if (count == 0) before = outside();
      EXPECT_EQ(outside(), before) << "bytes on the heap, after the failure of " << count;
      if (HasFailure()) return count;
    }
  }

  lua_State* L;
  int status = LUA_OK;
};

}  // namespace

TEST_F(MemoryFaults, CommandsRecover) {
  int faults = 0;
  for (const char* text : kCalls) {
    SCOPED_TRACE(text);
    prepare(text);
    const std::string expected = answer();
    for (const bool all : {false, true}) {
      faults += failEachAllocation(
          all, [&] { call(); }, [&] { EXPECT_EQ(answer(), expected); });
    }
  }
  std::fprintf(stderr, "commands: %d allocations failed\n", faults);
  EXPECT_GT(faults, 1000);
}

TEST_F(MemoryFaults, TheTablePartKeepsWhatItShows) {
  CLuaParseModulePart part;
  std::vector<std::string> row = {"a text of more than a few bytes", "another one of that kind"};
  std::list<std::vector<std::string>*> rows = {&row, nullptr, &row};
  part.SetSvgRect({0, 0, 400, 200});
  part.SetCell(4, 2, "2:1");
  const auto picture = [&] {
    std::string svg;
    EXPECT_TRUE(onFillPartShowAttr(&part, svg, nullptr)) << "an exception is the host's to see";
    return svg;
  };
  const std::function<void()> operations[] = {
      [&] { part.SetCell(6, 2, "1:2"); },
      [&] { part.DrawHeadText(row); },
      [&] { part.SetBodyText(rows); },
      [&] { picture(); },
  };
  int faults = 0;
  for (const auto& operation : operations) {
    const std::string before = picture();
    bool failed = true;
    const auto act = [&] {
      operation();
      failed = false;
    };
    const auto recover = [&] { EXPECT_TRUE(!failed || picture() == before); };
    faults += failEachAllocation(false, act, recover);
  }
  std::fprintf(stderr, "table part: %d allocations failed\n", faults);
  EXPECT_GT(faults, 20);
}
