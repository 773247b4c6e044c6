// Ctrl-C at the prompt.
#pragma once

#include <csignal>
#include <lua.hpp>

namespace desk::repl {

/// While it lives, Ctrl-C is noted and ends a read from the terminal.
class NotedInterrupt {
 public:
  NotedInterrupt();
  ~NotedInterrupt();
  NotedInterrupt(const NotedInterrupt&) = delete;
  NotedInterrupt& operator=(const NotedInterrupt&) = delete;

  /// Whether there was one.
  bool noted() const;

 private:
  struct sigaction before_ {};
};

/// While it lives, Ctrl-C raises "interrupted!" in what the script state runs. A second one, where
/// the first has not helped, ends the program.
class ScriptInterrupt {
 public:
  explicit ScriptInterrupt(lua_State* L);
  ~ScriptInterrupt();
  ScriptInterrupt(const ScriptInterrupt&) = delete;
  ScriptInterrupt& operator=(const ScriptInterrupt&) = delete;

 private:
  struct sigaction before_ {};
};

}  // namespace desk::repl
