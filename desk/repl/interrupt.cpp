#include "desk/repl/interrupt.h"

#include <poll.h>

#include <cerrno>

namespace desk::repl {

namespace {

volatile std::sig_atomic_t hasNoted = 0;
volatile std::sig_atomic_t isStopped = 0;
lua_State* volatile running = nullptr;

void note(int) {
  hasNoted = 1;
}

void raiseIfStopped(lua_State* L, lua_Debug*) {
  if (isStopped != 0) luaL_error(L, "interrupted!");
}

/// Setting a hook is the one thing that a signal may do to a running script state. It replaces a
/// script's own hook; a coroutine that runs has the hook that it was made with.
void stopScript(int signal) {
  std::signal(signal, SIG_DFL);
  isStopped = 1;
  lua_sethook(running, raiseIfStopped, LUA_MASKCALL | LUA_MASKRET | LUA_MASKCOUNT, 1);
}

struct sigaction handlerOf(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;  // and no SA_RESTART: a read is to end
  sigemptyset(&action.sa_mask);
  return action;
}

}  // namespace

NotedInterrupt::NotedInterrupt() {
  hasNoted = 0;
  const struct sigaction action = handlerOf(note);
  sigaction(SIGINT, &action, &before_);
  sigset_t interrupt;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  sigprocmask(SIG_BLOCK, &interrupt, &maskBefore_);
}

NotedInterrupt::~NotedInterrupt() {
  sigprocmask(SIG_SETMASK, &maskBefore_, nullptr);
  sigaction(SIGINT, &before_, nullptr);
}

bool NotedInterrupt::noted() const {
  return hasNoted != 0;
}

bool NotedInterrupt::waitForInput(int file) const {
  pollfd input{file, POLLIN, 0};
  while (!noted()) {
    // Other signals, such as a new size of the terminal, are the editor's.
    if (ppoll(&input, 1, nullptr, &maskBefore_) >= 0 || errno != EINTR) return true;
  }
  return false;
}

void letInterruptReach(lua_State* L) {
  constexpr int kInstructions = 10000;  // between two looks: nobody feels them, nor the wait
  lua_sethook(L, raiseIfStopped, LUA_MASKCOUNT, kInstructions);
}

ScriptInterrupt::ScriptInterrupt(lua_State* L) {
  running = L;
  const struct sigaction action = handlerOf(stopScript);
  sigaction(SIGINT, &action, &before_);
}

ScriptInterrupt::~ScriptInterrupt() {
  sigaction(SIGINT, &before_, nullptr);
  if (isStopped != 0) letInterruptReach(running);
  isStopped = 0;
  running = nullptr;
}

}  // namespace desk::repl
