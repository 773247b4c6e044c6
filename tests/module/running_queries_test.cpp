// Whatever script code calls in the middle of a query, the query answers from the job as it was
// when it began, and the nested call does what it does alone. Built for a Lua that is built as C++
// and for one that is built as C, which leaves queries by jumps over their destructors.
#include <lua.hpp>
#include <map>
#include <thread>

#include "host/cbl.h"
#include "module/query_commands.h"
#include "module/readers.h"
#include "module/registration.h"
#include "tests/desk/host/host_test.h"
#include "tests/support/counting_heap.h"
#include "tests/support/lua_show.h"
#include "tests/support/made_jobs.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#else
void __lsan_disable() {}
void __lsan_enable() {}
#endif

// What is downloaded has always arrived before.
cbl::CHttpDownload::CHttpDownload() = default;
cbl::CHttpDownload::~CHttpDownload() = default;
int cbl::CHttpDownload::get(const std::string&, const std::string&, const std::string&, long long,
                            long long) {
  return 0;
}

namespace {

std::string named(const std::string& name) {
  return name + " in a text that is too long for a short string";
}

/// The job with numbers of its own for each bar and piece, which are 7 in a made one.
std::string numbered(std::string job) {
  int number = 100;
  for (std::size_t at = 0; (at = job.find("Number\":7", at)) != std::string::npos;) {
    job.replace(at, 9, "Number\":" + std::to_string(number++));
  }
  return job;
}

/// What a Lua state may have.
std::size_t used = 0;
std::size_t most = SIZE_MAX;

void* allocate(void*, void* block, std::size_t before, std::size_t after) {
  const std::size_t owned = block == nullptr ? 0 : before;
  if (after > owned && used - owned + after > most) return nullptr;
  used += after - owned;
  if (after != 0) return std::realloc(block, after);
  std::free(block);
  return nullptr;
}

/// whole(outer, nested, deepest): outer(), and whether its answer is the one that it gives alone,
/// while finalisers call nested(), one inside another as deep as that. Returns how often they did,
/// and an answer of nested() other than `alone`. Finalisers run inside nested() from
/// finalisersRun() on.
constexpr char kScript[] = R"(
job = cus_ParseModule
function finalisersRun() collectgarbage('restart') end
function whole(outer, nested, alone, deepest)
  local runs, depth, inside, wrong = 0, 0, false, nil
  local function arm()
    setmetatable({}, {__gc = function()
      if runs == 6 then return collectgarbage('setpause', 200) end
      if inside and depth < deepest then
        depth, runs = depth + 1, runs + 1
        local answer = nested()
        if show(answer) ~= alone then wrong = show(answer) end
        depth = depth - 1
      end
      arm()
    end})
  end
  collectgarbage('setpause', 0) collectgarbage('setstepmul', 1000000) collectgarbage()
  for i = 1, deepest do arm() end
  inside = true
  local answer = outer()
  inside, runs = runs, 6
  collectgarbage('setpause', 200) collectgarbage('setstepmul', 200) collectgarbage()
  return show(answer), inside, wrong
end)";

constexpr const char* kQueries[] = {
    "job.get_work('')",   "job.get_work(mark)", "job.get_cut('')", "job.get_cut('7')",
    "job.get_cut('103')", "job.get_hole()",     "job.get_print()", "job.get_Dimensions(mark)",
};

constexpr const char* kNested[] = {
    "job.getjson_Flash('small.json')",
    "job.getjson_Flash('other.json')",
    "job.getjson_Flash('none.json')",
    "job.getjson_Flash('small.xml')",
    "job.getjson_Flash('other.xml')",
    "job.getjson_uDisk('small.json')",
    "job.getjson_url('http://127.0.0.1/', 'small')",
    "job.save_cutCurIndex('1', '2')",
    "job.getjson_Flash('small.json') and job.get_cut('')",
    "job.getjson_Flash('none.xml') and job.get_cut('')",
    "job.getjson_Flash('small.json') and job.getjson_Flash('small.xml')",
};

class RunningQueries : public HostTest {
 protected:
  RunningQueries() : L(lua_newstate(allocate, nullptr)) {
    ::setenv("CUS_CUTCURINDEX_FILE", "/dev/null", 1);
    desk::setLogSink([](const std::string&) {});
    const made_jobs::Size size{3, 3, 2, named("job")}, small{1, 1, 1, named("small")};
    const std::string flash = "root/mnt/data/CustomFileDir/";
    tree.write(flash + "JsonFile/job.json", made_jobs::json(size));
    tree.write(flash + "JsonFile/own.json", numbered(made_jobs::json(size)));
    tree.write(flash + "JsonFile/small.json", made_jobs::json(small));
    tree.write(flash + "JsonFile/other.json", R"({"Version":"2.0","version":"1.0","Bar":[]})");
    tree.write(flash + "XmlFile/job.xml", made_jobs::xml(size));
    tree.write(flash + "XmlFile/small.xml", made_jobs::xml(small));
    tree.write(flash + "XmlFile/other.xml", "<Job><Version>2.0</Version></Job>");
    tree.write("usb/json/small.json", made_jobs::json(small));
    testing::internal::CaptureStdout();
    luaL_openlibs(L);
    reg_cus_ParseModule(L);
    run(kShow);
    run(kScript);
    run("mark = '" + named("job") + "'");
  }
  ~RunningQueries() override {
    lua_close(L);
    const std::string output = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::fputs(output.c_str(), stderr);
  }

  /// Runs a chunk and returns its first result as text.
  std::string run(const std::string& chunk) {
    EXPECT_EQ(luaL_dostring(L, chunk.c_str()), LUA_OK) << chunk << ": " << lua_tostring(L, -1);
    const std::string text = lua_gettop(L) == 0 ? "" : luaL_tolstring(L, 1, nullptr);
    lua_settop(L, 0);
    return text;
  }

  /// Loads job files in this order, so that both readers hold what they are to hold.
  void load(const std::string& first, const std::string& current) {
    run("job.getjson_Flash('" + first + "') job.getjson_Flash('" + current + "')");
  }

  /// Calls a query directly, from as little depth in the stack as there is, and lets it have `room`
  /// bytes more than are in use.
  int callWithin(std::size_t room, lua_CFunction query) {
    lua_gc(L, LUA_GCCOLLECT, 0);
    lua_pushcfunction(L, query);
    lua_pushstring(L, "");
    __lsan_disable();  // what a jump passes over stays behind
    most = used + room;
    const int status = lua_pcall(L, 1, 1, 0);
    most = SIZE_MAX;
    __lsan_enable();
    lua_settop(L, 0);
    return status;
  }

  /// Whether a load finds a query running: it reads nothing, but would set the bars aside first.
  bool loadFindsAQuery() {
    const BAR_T* const bars = json.data.Bar.data();
    run("job.getjson_Flash('none.json')");
    return json.data.Bar.data() != bars;
  }

  lua_State* L;
};

}  // namespace

TEST_F(RunningQueries, AnswerFromTheJobAsItWas) {
  const struct {
    const char* first;
    const char* current;
  } kJobs[] = {{"small.xml", "own.json"}, {"small.xml", "job.json"}, {"own.json", "job.xml"}};
  int turn = 0;
  for (const auto& jobs : kJobs) {
    for (const char* query : kQueries) {
      load(jobs.first, jobs.current);
      const std::string expected = run(std::string("return show(") + query + ")");
      const auto check = [&](const std::string& nested, int deepest) {
        if (turn++ % CUS_FEWER != 0) return;
        load(jobs.first, jobs.current);
        run(std::string("return ") + query);  // which leaves the number for MaterialCount
        const std::string alone = run("return show(" + nested + ")");
        load(jobs.first, jobs.current);
        const std::string call = std::string("answer, runs, wrong = whole(function() return ") +
                                 query + " end, function() return " + nested + " end, [[" + alone +
                                 "]], " + std::to_string(deepest) + ")";
        run(call);
        EXPECT_EQ(run("return answer"), expected) << jobs.current << ": " << call;
        EXPECT_NE(run("return runs"), "0") << call;
        EXPECT_EQ(run("return wrong"), "nil") << call;
      };
      for (const char* nested : kNested) check(nested, 1);
      for (const char* nested : kQueries) check(nested, 1);
      for (const char* nested : kQueries) {
        check(std::string("{job.getjson_Flash('job.json'), finalisersRun(), ") + nested + "}", 2);
      }
    }
  }
}

TEST_F(RunningQueries, ALoadAloneLeavesTheBarsWhereTheyAre) {
  load("small.xml", "own.json");
  EXPECT_FALSE(loadFindsAQuery());
  run("whole(function() return job.get_work('') end, function()\n"
      "  job.getjson_Flash('small.json') end, nil, 1)");
  EXPECT_FALSE(loadFindsAQuery());
}

TEST_F(RunningQueries, LeftByAnErrorDoNotRunAnyMore) {
  constexpr lua_CFunction kCommands[] = {getWorkCommand, getCutCommand, getHoleCommand,
                                         getPrintCommand, getDimensionsCommand};
  int failures = 0;
  for (const lua_CFunction command : kCommands) {
    load("small.xml", "own.json");
    for (std::size_t room = 0; callWithin(room, command) != LUA_OK; room += 160, ++failures) {
      // deeper than the query was left
      ASSERT_FALSE(loadFindsAQuery()) << room;
      // in another stack
      callWithin(room, command);
      bool found = true;
      std::thread([&] { found = loadFindsAQuery(); }).join();
      ASSERT_FALSE(found) << room;
    }
  }
  EXPECT_GT(failures, 100);
}

TEST_F(RunningQueries, LeftByAnErrorGiveBackWhatWasSetAside) {
  const long long outside = counting_heap::countsMalloc() ? 1 : 0;
  const auto liveBytes = [&] {
    lua_gc(L, LUA_GCCOLLECT, 0);
    return counting_heap::live().bytes - outside * static_cast<long long>(used);
  };
  load("small.xml", "own.json");
  const long long withJob = liveBytes();
  run("job.getjson_Flash('small.json')");
  const long long sizeOfJob = withJob - liveBytes();
  ASSERT_GT(sizeOfJob, 10000);

  long long early = 0;
  for (int round = 0; round < 50; ++round) {
    run("job.getjson_Flash('own.json')");
    run("pcall(whole, function() return job.get_work('') end, function()\n"
        "  job.getjson_Flash('small.json') error('out') end, nil, 1)\n"
        "collectgarbage('setpause', 200)");
    run("job.getjson_Flash('none.json')");
    run("job.getjson_Flash('small.json')");
    if (round == 5) early = liveBytes();
  }
  EXPECT_LT(liveBytes(), early + sizeOfJob);
}
