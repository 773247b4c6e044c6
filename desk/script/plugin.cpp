#include "desk/script/plugin.h"

#include <dlfcn.h>

#include "desk/base/errors.h"

namespace desk::script {

namespace {

/// A bare file name would send the loader to the system's library folders.
std::string asPath(const std::string& name) {
  return name.find('/') == std::string::npos ? "./" + name : name;
}

}  // namespace

Plugin::Plugin(const std::string& path)
    : path_(path), handle_(dlopen(asPath(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    throw Error(kExitIoError, std::string("cannot load the plug-in: ") + dlerror());
  }
}

Plugin::~Plugin() {
  dlclose(handle_);
}

void* Plugin::symbol(const char* name) const {
  void* address = dlsym(handle_, name);
  if (address == nullptr) {
    throw Error(kExitIoError, "not a plug-in of this kind: " + path_ + " has no " + name);
  }
  return address;
}

void Plugin::registerModule(lua_State* L) const {
  find<int(lua_State*)>("Custom_RegLuaLib")(L);
}

}  // namespace desk::script
