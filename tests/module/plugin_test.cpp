// The plug-in as a host loads it.
#include "desk/plugin.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "desk/script_engine.h"

// A host may use names that the plug-in has too. Both must go on with their own.
int nFileType = 99;

namespace {

bool isLoaded() {
  void* handle = dlopen(CUS_PLUGIN, RTLD_NOLOAD | RTLD_NOW);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

TEST(Plugin, IsUnloadedForGoodWhenItsLastUserIsGone) {
  for (int round = 0; round < 3; ++round) {
    {
      const desk::Plugin plugin(CUS_PLUGIN);
      const desk::ScriptEngine engine(plugin, desk::ModuleErrors::Guarded);
      EXPECT_TRUE(isLoaded());
    }
    EXPECT_FALSE(isLoaded());
  }
}

TEST(Plugin, KeepsToItsOwnNamesBesideAHostOfTheSameNames) {
  const desk::Plugin plugin(CUS_PLUGIN);
  const desk::ScriptEngine engine(plugin, desk::ModuleErrors::Guarded);
  const int* fileType = plugin.find<int>("nFileType");
  EXPECT_EQ(*fileType, 0);
  EXPECT_EQ(luaL_dostring(engine.state(), "cus_ParseModule.getjson_Flash('none.xml')"), LUA_OK);
  EXPECT_EQ(*fileType, 1);
  EXPECT_EQ(nFileType, 99);
}

}  // namespace
