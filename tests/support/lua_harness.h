// A Lua state for tests that watches the stack.
#pragma once

#include <gtest/gtest.h>

#include <lua.hpp>
#include <string>

namespace test_support {

/// A state with the standard libraries. At the end of each test the stack must be level; a full
/// collection follows, so that a sanitizer sees what a stray reference would hide.
class LuaTest : public testing::Test {
 protected:
  void SetUp() override {
    L = luaL_newstate();
    luaL_openlibs(L);
  }

  void TearDown() override {
    EXPECT_EQ(lua_gettop(L), 0) << "the test leaves values on the Lua stack";
    lua_gc(L, LUA_GCCOLLECT, 0);
    lua_close(L);
  }

  /// Runs a chunk and returns what it returns, as text; the message when it raises an error.
  std::string run(const std::string& chunk) {
    if (luaL_dostring(L, chunk.c_str()) == LUA_OK && lua_gettop(L) == 0) return "";
    const std::string result = luaL_tolstring(L, -1, nullptr);
    lua_settop(L, 0);
    return result;
  }

  lua_State* L = nullptr;
};

}  // namespace test_support
