#include "desk/base/file_watch.h"

#include <signal.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <tuple>
#include <utility>

namespace desk {

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

bool FileWatch::State::operator==(const State& other) const {
  return std::tie(inode, size, seconds, nanoseconds) ==
         std::tie(other.inode, other.size, other.seconds, other.nanoseconds);
}

FileWatch::State FileWatch::stateOf(const std::string& file) {
  State state;
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return state;
  state.inode = status.st_ino;
  state.size = status.st_size;
  state.seconds = status.st_mtim.tv_sec;
  state.nanoseconds = status.st_mtim.tv_nsec;
  return state;
}

void FileWatch::note(const std::string& file) {
  const State now = stateOf(file);
  files_[file] = {now, now};
}

void FileWatch::expect(const std::string& file) {
  files_.try_emplace(file, Watched{{}, stateOf(file)});
}

std::vector<std::string> FileWatch::changed() {
  std::vector<std::string> names;
  for (auto& [name, file] : files_) {
    const State now = stateOf(name);
    const State before = std::exchange(file.last, now);
    if (now == file.known || !(now == before)) continue;
    file.known = now;
    names.push_back(name);
  }
  return names;
}

void watchFiles(const std::function<std::vector<std::string>()>& list,
                const std::function<void(const std::vector<std::string>&)>& look) {
  listenToSignals();
  while (!isEnough) {
    const std::vector<std::string> files = list();
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

}  // namespace desk
