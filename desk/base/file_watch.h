// Files that somebody else saves, and following them.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace desk {

/// Detects changes of files by inode, size and time of change. It reads the disk only when called.
/// Not for use by several threads.
class FileWatch {
 public:
  /// Forgets all files.
  void clear() { files_.clear(); }

  /// Watches `file`, which need not exist, and takes it as it is now.
  void note(const std::string& file);

  /// Watches a file that has come to be, unless it is watched already: it counts as changed.
  void expect(const std::string& file);

  /// The files that are no longer as they were, and have held still since the last call: one that
  /// is still being written is not told yet. Each change is told once.
  std::vector<std::string> changed();

 private:
  /// What tells two states of a file apart.
  struct State {
    ino_t inode = 0;
    off_t size = -1;  ///< -1: there is no such file
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const State& other) const;
  };
  struct Watched {
    State known;
    State last;
  };
  static State stateOf(const std::string& file);

  std::map<std::string, Watched> files_;
};

/// Calls `look` with the files that `list` gives, and again whenever there are others or one of
/// them was saved, until SIGINT or SIGTERM says that it is enough. A file that is still being
/// written is waited for.
void watchFiles(const std::function<std::vector<std::string>()>& list,
                const std::function<void(const std::vector<std::string>&)>& look);

}  // namespace desk
