// The plug-in as a host loads it.
#include "desk/script/plugin.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "desk/script/script_engine.h"
#include "host/part_types.h"

// A host may use names that the plug-in has too; `main` it has in any case. Both must go on with
// their own.
int nFileType = 99;
int json = 98;
int xml = 97;
int hostCalls = 0;
void* onCreate() {
  ++hostCalls;
  return nullptr;
}
bool onDestroy(void*) {
  return ++hostCalls == 0;
}

namespace {

bool isLoaded() {
  void* handle = dlopen(CUS_PLUGIN, RTLD_NOLOAD | RTLD_NOW);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

TEST(Plugin, IsUnloadedForGoodWhenItsLastUserIsGone) {
  for (int round = 0; round < 3; ++round) {
    {
      const desk::script::Plugin plugin(CUS_PLUGIN);
      const desk::script::ScriptEngine engine(plugin, desk::script::ModuleErrors::Guarded);
      EXPECT_TRUE(isLoaded());
    }
    EXPECT_FALSE(isLoaded());
  }
}

TEST(Plugin, KeepsToItsOwnNamesBesideAHostOfTheSameNames) {
  const desk::script::Plugin plugin(CUS_PLUGIN);
  const desk::script::ScriptEngine engine(plugin, desk::script::ModuleErrors::Guarded);
  const int* fileType = plugin.find<int>("nFileType");
  EXPECT_EQ(*fileType, 0);
  EXPECT_EQ(luaL_dostring(engine.state(), "cus_ParseModule.getjson_Flash('none.xml')"), LUA_OK);
  EXPECT_EQ(*fileType, 1);
  EXPECT_EQ(nFileType, 99);

  tagPARTCALLBACKS slots;
  plugin.find<int(tagPARTCALLBACKS*)>("Custom_SetFunPoint")(&slots);
  void* const part = slots.create();
  EXPECT_NE(part, nullptr);
  EXPECT_TRUE(slots.destroy(part));
  EXPECT_EQ(hostCalls + json + xml, 98 + 97);
  for (const char* name : {"json", "xml", "nFileType", "_Z8onCreatev", "main"}) {
    void* const ofHost = dlsym(RTLD_DEFAULT, name);
    EXPECT_TRUE(ofHost != nullptr && ofHost != plugin.find<void>(name)) << name;
  }
}

}  // namespace
