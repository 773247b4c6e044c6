#include "desk/base/file_watch.h"

#include <sys/stat.h>

#include <tuple>
#include <utility>

namespace desk {

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

}  // namespace desk
