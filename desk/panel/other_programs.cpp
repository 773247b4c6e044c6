#include "desk/panel/other_programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iostream>

#include "desk/base/errors.h"

namespace desk::panel {

namespace {

constexpr char kConverter[] = "rsvg-convert";

/// A file in memory that a child process can read from its start.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes) : number_(memfd_create("picture", MFD_CLOEXEC)) {
    const auto size = static_cast<ssize_t>(bytes.size());
    if (number_ < 0 || ::write(number_, bytes.data(), bytes.size()) != size ||
        lseek(number_, 0, SEEK_SET) != 0) {
      throw Error(kExitIoError, "cannot hand the picture to " + std::string(kConverter));
    }
  }
  ~MemoryFile() { close(number_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace

void writeSvg(const std::string& svg, const std::string& file) {
  std::ofstream opened;
  if (file != "-") opened.open(file, std::ios::binary);
  std::ostream& out = file == "-" ? std::cout : opened;
  out << svg << std::flush;
  if (!out) throw Error(kExitIoError, "cannot write " + file);
}

void writePng(const std::string& svg, const std::string& file, int dotsPerInch) {
  const MemoryFile input(svg);
  const std::string dots = std::to_string(dotsPerInch);
  const pid_t child = startProcess(
      {kConverter, "--format=png", "--dpi-x=" + dots, "--dpi-y=" + dots, "--output=" + file},
      input.number());
  if (child < 0) {
    throw Error(kExitIoError, std::string("cannot write ") + file + ": PNG needs the program " +
                                  kConverter + " (package librsvg2-bin)");
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw Error(kExitIoError, "cannot write " + file + ": " + kConverter + " failed");
  }
}

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

}  // namespace desk::panel
