// The plug-in as a host loads it.
#include "desk/script/plugin.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

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

// The objects with a destructor are told to the C library as they are constructed.
namespace {
std::vector<const void*>* constructed = nullptr;
}  // namespace
extern "C" int __cxa_atexit(void (*destroy)(void*), void* object, void* library) {
  using Function = int(void (*)(void*), void*, void*);
  static const auto real = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "__cxa_atexit"));
  if (constructed != nullptr) constructed->push_back(object);
  return real(destroy, object, library);
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

TEST(Plugin, ConstructsTheJsonReaderBeforeTheXmlReader) {
  std::vector<const void*> objects;
  constructed = &objects;
  const desk::script::Plugin plugin(CUS_PLUGIN);
  constructed = nullptr;
  const auto place = [&](const char* name) {
    return std::find(objects.begin(), objects.end(), plugin.find<void>(name)) - objects.begin();
  };
  EXPECT_LT(place("json"), place("xml"));
  EXPECT_LT(place("xml"), static_cast<std::ptrdiff_t>(objects.size()));
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
