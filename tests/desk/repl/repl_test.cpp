// How values are shown, chunks recognised and names completed, without a terminal.
#include <gmock/gmock.h>

#include <lua.hpp>
#include <memory>

#include "desk/repl/prompt_code.h"
#include "desk/repl/repl.h"

namespace {

using namespace desk::repl;
using testing::ElementsAre;

lua_State* stateWithLibraries() {
  lua_State* L = luaL_newstate();
  luaL_openlibs(L);
  return L;
}

class ReplTest : public testing::Test {
 protected:
  ReplTest() : state_(stateWithLibraries(), lua_close), code_(state_.get()) {}
  ~ReplTest() override { EXPECT_EQ(lua_gettop(state_.get()), 0); }

  const PromptCode& code() { return code_; }
  lua_State* L() { return state_.get(); }

  void run(const std::string& text) {
    ASSERT_EQ(luaL_dostring(L(), text.c_str()), LUA_OK) << lua_tostring(L(), -1);
  }

  std::string shown(const std::string& expression, const Limits& limits = {}) {
    run("return " + expression);
    const std::string text = code().valueText(-1, limits);
    EXPECT_EQ(lua_gettop(L()), 1) << "the stack is level";
    lua_settop(L(), 0);
    return text;
  }

 private:
  std::unique_ptr<lua_State, void (*)(lua_State*)> state_;
  PromptCode code_;
};

TEST_F(ReplTest, ValuesAreShownAsPeopleReadThem) {
  const struct {
    const char* expression;
    const char* text;
  } kCases[] = {
      {"'窗\\n\"'", R"("窗\n\"")"},
      {"nil", "nil"},
      {"1.0", "1.0"},
      {"{}", "{}"},
      {"{3, 'a\"\\\\\\n\\1窗\\255', true}", R"({3, "a\"\\\n\x01窗\xff", true})"},
      {"{b = 2, a = 1, 'first', [10] = 10, [2.5] = 0, ['end'] = 1, [true] = 3}",
       R"({"first", [2.5] = 0, [10] = 10, ["end"] = 1, a = 1, b = 2, [true] = 3})"},
      {"{{{{{1}}}}}", "{{{{{…}}}}}"},
      {"setmetatable({}, {__tostring = function() return 'own' end})", "own"},
      {"{setmetatable({}, {__index = error, __pairs = error, __len = error})}", "{{}}"},
      {"(function() local t = {1} t.me = t t.sub = {up = t} return t end)()",
       "{1, me = <cycle: 1 up>, sub = {up = <cycle: 2 up>}}"},
      {"(function() local t = {1} return {t, t} end)()", "{{1}, {1}}"},
  };
  for (const auto& row : kCases) EXPECT_EQ(shown(row.expression), row.text) << row.expression;
}

TEST_F(ReplTest, LongTablesAreFoldedAndCutAndWhatIsMissingIsCounted) {
  Limits limits;
  limits.columns = 20;
  EXPECT_EQ(shown("{a = 1, b = '窗窗窗', c = {1, 2, 3, 4, 5, 6, 7}}", limits),
            "{\n"
            "  a = 1,\n"
            "  b = \"窗窗窗\",\n"
            "  c = {\n"
            "    1, 2, 3, 4, 5,\n"
            "    6, 7,\n"
            "  },\n"
            "}");
  limits = {};
  limits.entries = 3;
  limits.textColumns = 8;
  EXPECT_EQ(shown("{1, 2, 3, 4, x = 5}", limits), "{1, 2, 3, … 2 more}");
  EXPECT_EQ(shown("{1, x = 5, y = 6, z = 7}", limits), "{1, x = 5, y = 6, … 1 more}");
  EXPECT_EQ(shown("{('窗'):rep(5)}", limits), "{\"窗窗窗…\" (15 bytes)}");
  limits.values = 5;
  EXPECT_EQ(shown("{{1, 2}, {3, 4}, {5}}", limits), "{{1, 2}, {3, … 1 more}, … 1 more}");
}

TEST_F(ReplTest, AMillionEntriesDoNotTakeLong) {
  const std::string text =
      shown("(function() local t = {} for i = 1, 1e6 do t[i] = {i} end return t end)()");
  EXPECT_THAT(text, testing::EndsWith("… 999970 more,\n}"));
}

TEST_F(ReplTest, ScriptsThatChangeGlobalsOrSetHooksDoNotReachIt) {
  run("string.format = nil string.sub = nil table.concat = nil next = nil type = nil debug = nil "
      "getmetatable('').__index = nil shown = {text = 'a'}");
  lua_getglobal(L(), "shown");
  lua_sethook(
      L(), [](lua_State* state, lua_Debug*) { luaL_error(state, "called"); }, LUA_MASKCALL, 0);
  EXPECT_EQ(code().valueText(-1, {}), "{text = \"a\"}");
  EXPECT_THAT(code().complete("string.le").words, ElementsAre("len"));
  EXPECT_NE(lua_gethook(L()), nullptr) << "it is the script's";
  lua_settop(L(), 0);
}

TEST_F(ReplTest, ChunksAreExpressionsStatementsOrNotYetComplete) {
  const struct {
    const char* text;
    Chunk chunk;
  } kCases[] = {
      {"1 + 1", Chunk::Ready},
      {"=1, 2", Chunk::Ready},
      {"x = 1", Chunk::Ready},
      {"print(1)", Chunk::Ready},
      {"", Chunk::Ready},
      {"-- nothing", Chunk::Ready},
      {"return 5", Chunk::Ready},
      {"{\n1\n}", Chunk::Ready},
      {"for i = 1, 2 do", Chunk::Incomplete},
      {"{", Chunk::Incomplete},
      {"x = {", Chunk::Incomplete},
      {"1 +", Chunk::Incomplete},
      {"f(", Chunk::Incomplete},
      {"=1 +", Chunk::Incomplete},
      {"[[ab", Chunk::Incomplete},
      {"function f()\nreturn 1", Chunk::Incomplete},
      {"x = = 2", Chunk::SyntaxError},
      {"'ab\n", Chunk::SyntaxError},
      {"1 1", Chunk::SyntaxError},
      {"end", Chunk::SyntaxError},
      {"=x = 1", Chunk::SyntaxError},
      {"\x1bLua", Chunk::SyntaxError},
  };
  for (const auto& row : kCases) {
    EXPECT_EQ(compile(L(), row.text), row.chunk) << row.text;
    EXPECT_EQ(lua_gettop(L()), row.chunk == Chunk::Incomplete ? 0 : 1) << row.text;
    lua_settop(L(), 0);
  }
}

TEST_F(ReplTest, NamesAreCompletedFromTablesAndWhatStandsForThem) {
  run("job = {get_cut = print, get_work = print, get = 1, ['no name'] = 1, [1] = 1, ['end'] = 1}"
      "base = {inherited = print}"
      "object = setmetatable({own = 1}, {__index = setmetatable({near = print}, {__index = base})})"
      "text = 'abc' trap = setmetatable({}, {__index = function() error('called') end})"
      "ring = setmetatable({a = 1}, {}) getmetatable(ring).__index = ring");
  const struct {
    const char* typed;
    std::vector<std::string> words;
  } kCases[] = {
      {"job.", {"get", "get_cut", "get_work"}},
      {"print(job.get_", {"get_cut", "get_work"}},
      {"job:", {"get_cut", "get_work"}},
      {"job.nothing.", {}},
      {"x = object.", {"inherited", "near", "own"}},
      {"object:", {"inherited", "near"}},
      {"text:up", {"upper"}},
      {"string.for", {"format"}},
      {"ret", {"return"}},
      {"jo", {"job"}},
      {"el", {"else", "elseif"}},
      {"trap.x.", {}},
      {"trap.", {}},
      {"ring.", {"a"}},
      {"窗job.get_c", {"get_cut"}},
      {"1.", {}},
      {"::", {}},
  };
  for (const auto& row : kCases)
    EXPECT_EQ(code().complete(row.typed).words, row.words) << row.typed;
  const Completions found = code().complete("job.g");
  EXPECT_EQ(found.typed, 1U);
  EXPECT_EQ(found.common(), "get");
}

}  // namespace
