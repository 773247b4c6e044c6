#include "desk/script/plugin.h"

#include <dlfcn.h>

#include "desk/base/errors.h"
#include "desk/script/elf_image.h"

namespace desk::script {

namespace {

/// A bare file name would send the loader to the system's library folders.
std::string asPath(const std::string& name) {
  return name.find('/') == std::string::npos ? "./" + name : name;
}

Error cannotLoad(const std::string& reason) {
  return {kExitIoError, "cannot load the plug-in: " + reason};
}

std::string examined(const std::string& path) {
  return "; cusdesk doctor " + path + " tells more";
}

}  // namespace

Plugin::Plugin(const std::string& path) : path_(path) {
  try {
    requireWholeElf(path);
  } catch (const Error& error) {
    throw cannotLoad(error.what());
  }
  handle_ = dlopen(asPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) throw cannotLoad(dlerror() + examined(path));
}

Plugin::~Plugin() {
  dlclose(handle_);
}

void* Plugin::symbol(const char* name) const {
  void* address = dlsym(handle_, name);
  if (address == nullptr) throw cannotLoad(path_ + " has no " + name + examined(path_));
  return address;
}

void Plugin::registerModule(lua_State* L) const {
  find(cus_plugin::kRegLuaLib)(L);
}

}  // namespace desk::script
