// How the module comes into a script state.
#include "module/registration.h"

#include "tests/support/lua_harness.h"

namespace {

using RegistrationTest = test_support::LuaTest;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST_F(RegistrationTest, ModuleIsAGlobalAndRequiredWithExactlyNineFunctions) {
  lua_pushstring(L, "below");
  CaptureStdout();
  EXPECT_EQ(Custom_RegLuaLib(L), 1);
  EXPECT_EQ(GetCapturedStdout(),
            "cus_ParseModule --------------------------------\n"
            "cus_ParseModule2 --------------------------------\n");
  EXPECT_EQ(lua_gettop(L), 1);
  lua_settop(L, 0);
  EXPECT_EQ(run("assert(require('cus_ParseModule') == cus_ParseModule)\n"
                "local names = {}\n"
                "for name, value in pairs(cus_ParseModule) do\n"
                "  assert(type(value) == 'function'); names[#names + 1] = name\n"
                "end\n"
                "table.sort(names) return table.concat(names, ' ')"),
            "get_Dimensions get_cut get_hole get_print get_work getjson_Flash getjson_uDisk "
            "getjson_url save_cutCurIndex");
}

TEST_F(RegistrationTest, NullStateIsIgnoredInSilence) {
  CaptureStdout();
  EXPECT_EQ(Custom_RegLuaLib(nullptr), 1);
  reg_cus_ParseModule(nullptr);
  EXPECT_EQ(GetCapturedStdout(), "");
}

}  // namespace
