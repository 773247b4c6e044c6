#include "desk/commands/watch.h"

#include <signal.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "desk/base/file_watch.h"

namespace desk::commands {

namespace {

constexpr std::chrono::milliseconds kBetween{100};

std::atomic<bool> isEnough{false};  ///< set by a signal
static_assert(std::atomic<bool>::is_always_lock_free);

/// A second signal ends the program at once.
void listenToSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { isEnough = true; };
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

}  // namespace

void watchFiles(const std::function<Files()>& list, const std::function<void(const Files&)>& look) {
  listenToSignals();
  while (!isEnough) {
    const Files files = list();
    // Before the look: what is saved during it is seen after it.
    FileWatch watch;
    for (const std::string& file : files) watch.note(file);
    look(files);
    do {
      std::this_thread::sleep_for(kBetween);
      for (const std::string& file : list()) watch.expect(file);
    } while (!isEnough && watch.changed().empty());
  }
}

}  // namespace desk::commands
