// How the module comes into a script state; scripts see the rest in the session registration.
#include "module/registration.h"

#include "tests/support/lua_harness.h"

namespace {

using RegistrationTest = test_support::LuaTest;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST_F(RegistrationTest, LeavesTheStackAloneAndIgnoresANullState) {
  lua_pushstring(L, "below");
  CaptureStdout();
  EXPECT_EQ(Custom_RegLuaLib(L), 1);
  GetCapturedStdout();
  EXPECT_EQ(lua_gettop(L), 1);
  lua_settop(L, 0);
  CaptureStdout();
  EXPECT_EQ(Custom_RegLuaLib(nullptr), 1);
  reg_cus_ParseModule(nullptr);
  EXPECT_EQ(GetCapturedStdout(), "");
}

}  // namespace
