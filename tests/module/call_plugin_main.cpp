// Loads a plug-in and calls its smoke test: call_plugin_main PLUGIN ROOT
#include <dlfcn.h>

#include <cstdio>

#include "desk/host/settings.h"
#include "desk/script/plugin.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  deskhost::settings().root = argv[2];
  std::puts("the program's own main");
  const desk::script::Plugin plugin(argv[1]);
  const auto smokeTest = plugin.find<int()>("main");
  if (dlsym(RTLD_DEFAULT, "main") == reinterpret_cast<void*>(smokeTest)) return 4;
  return smokeTest();
}
