// Ctrl-C at the prompt.
#pragma once

#include <csignal>
#include <lua.hpp>

namespace desk::repl {

/// While it lives, Ctrl-C comes through only in `waitForInput`, where it is noted and ends the
/// wait. So none is lost between two reads.
class NotedInterrupt {
 public:
  NotedInterrupt();
  ~NotedInterrupt();
  NotedInterrupt(const NotedInterrupt&) = delete;
  NotedInterrupt& operator=(const NotedInterrupt&) = delete;

  /// Whether there was one.
  bool noted() const;

  /// Blocks until `file` is readable; false if Ctrl-C came first.
  bool waitForInput(int file) const;

 private:
  struct sigaction before_ {};
  sigset_t maskBefore_{};
};

/// Lets a ScriptInterrupt reach this script state and every coroutine that is made in it from now
/// on. A script that sets a hook of its own in a coroutine takes that away there.
void letInterruptReach(lua_State* L);

/// While it lives, Ctrl-C raises "interrupted!" in what the script state runs, again and again
/// where that is caught, until the state is back at its caller. A second one, where the first has
/// not helped, ends the program.
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
