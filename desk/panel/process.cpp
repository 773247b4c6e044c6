#include "desk/panel/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace desk {

pid_t startProcess(std::vector<std::string> words, int input) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  if (input < 0) {
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  } else {
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
  }
  posix_spawn_file_actions_adddup2(&files, STDERR_FILENO, STDOUT_FILENO);
  pid_t child = -1;
  const int failure =
      posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  return failure == 0 ? child : -1;
}

}  // namespace desk
