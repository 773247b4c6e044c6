#include "desk/panel/other_programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "desk/base/errors.h"
#include "desk/base/files.h"

namespace desk::panel {

namespace {

constexpr char kConverter[] = "rsvg-convert";

/// A file in memory that a child process can read from its start, or write.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes = {}) : file_(memfd_create("picture", MFD_CLOEXEC)) {
    const auto size = static_cast<ssize_t>(bytes.size());
    if (!file_.isOpen() || ::write(number(), bytes.data(), bytes.size()) != size ||
        lseek(number(), 0, SEEK_SET) != 0) {
      throw Error(kExitIoError, "cannot hand the picture to " + std::string(kConverter));
    }
  }
  int number() const { return file_.number(); }

  /// All that was written to it.
  std::string content() const {
    std::string bytes(static_cast<std::size_t>(lseek(number(), 0, SEEK_END)), '\0');
    const ssize_t got = ::pread(number(), bytes.data(), bytes.size(), 0);
    bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return bytes;
  }

 private:
  const Descriptor file_;
};

}  // namespace

std::string pngOf(const std::string& svg, int dotsPerInch) {
  const MemoryFile input(svg);
  const MemoryFile output;
  const std::string dots = std::to_string(dotsPerInch);
  const pid_t child =
      startProcess({kConverter, "--format=png", "--dpi-x=" + dots, "--dpi-y=" + dots},
                   input.number(), output.number());
  if (child < 0) {
    throw Error(kExitIoError,
                std::string("PNG needs the program ") + kConverter + " (package librsvg2-bin)");
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw Error(kExitIoError, std::string(kConverter) + " failed");
  }
  return output.content();
}

pid_t startProcess(std::vector<std::string> words, int input, int output) {
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
  posix_spawn_file_actions_adddup2(&files, output < 0 ? STDERR_FILENO : output, STDOUT_FILENO);
  pid_t child = -1;
  const int failure =
      posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  return failure == 0 ? child : -1;
}

}  // namespace desk::panel
