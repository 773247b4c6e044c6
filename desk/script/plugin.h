// The plug-in as cusdesk loads it: the very library that goes to the panel.
#pragma once

#include <string>

#include "host/plugin.h"

namespace desk::script {

/// A loaded plug-in. Unloads it when destroyed; script states that it was registered with must be
/// closed before then.
class Plugin {
 public:
  /// Loads the library at `path`. Throws Error when it cannot be loaded.
  explicit Plugin(const std::string& path);
  ~Plugin();
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  /// Registers the script module, as the panel does for each of its script states.
  void registerModule(lua_State* L) const;

  /// The address of an exported function or object. Throws Error when the library has none.
  template <class Exported>
  Exported* find(const char* name) const {
    return reinterpret_cast<Exported*>(symbol(name));
  }
  template <class Signature>
  Signature* find(const cus_plugin::Function<Signature>& function) const {
    return find<Signature>(function.name);
  }

 private:
  void* symbol(const char* name) const;

  std::string path_;
  void* handle_;
};

}  // namespace desk::script
