#include "desk/base/files.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <system_error>
#include <utility>

namespace desk {

namespace {

constexpr int kMaxNames = 16;
constexpr int kCreateFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

std::string directoryOf(const std::string& file) {
  return file.substr(0, file.rfind('/') + 1);
}

/// A name nobody can prepare in advance. Short, so that it fits wherever the target's does.
bool randomName(std::string& name) {
  std::uint64_t bits = 0;
  if (::getrandom(&bits, sizeof bits, 0) != static_cast<ssize_t>(sizeof bits)) return false;
  char text[32];
  std::snprintf(text, sizeof text, ".cusdesk-%016llx.part", static_cast<unsigned long long>(bits));
  name = text;
  return true;
}

/// The rename is not safe from a power cut before the directory is on the disk too. Some file
/// systems cannot do this; the document is in place either way.
void syncDirectory(const std::string& directory) {
  const Descriptor opened(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.isOpen()) ::fsync(opened.number());
}

}  // namespace

std::string systemReason(int error) {
  return std::generic_category().message(error);
}

Error cannotRead(const std::string& file, const std::string& reason) {
  return {kExitIoError,
          "cannot read " + (file == kStandardStream ? "standard input" : file) + ": " + reason};
}

Error cannotWrite(const std::string& file, const std::string& reason) {
  return {kExitIoError, "cannot write " + file + ": " + reason};
}

void requireReadable(const std::string& file) {
  if (file == kStandardStream) return;
  const Descriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!opened.isOpen() || ::fstat(opened.number(), &status) != 0) {
    throw cannotRead(file, systemReason(errno));
  }
  if (S_ISDIR(status.st_mode)) throw cannotRead(file, systemReason(EISDIR));
}

void writeFile(const std::string& file, std::string_view bytes) {
  const bool isStream = file == kStandardStream;
  std::FILE* const stream = isStream ? stdout : std::fopen(file.c_str(), "wbe");
  if (stream == nullptr) throw cannotWrite(file, systemReason(errno));
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
  if (isStream) return;
  const int error = errno;
  const bool closed = std::fclose(stream) == 0;
  if (!written || !closed) throw cannotWrite(file, systemReason(written ? errno : error));
}

bool Descriptor::close() {
  const int number = std::exchange(number_, -1);
  return number < 0 || ::close(number) == 0;
}

TemporaryFile::~TemporaryFile() {
  descriptor_.close();
  if (!path_.empty()) ::unlink(path_.c_str());
}

bool TemporaryFile::create(const std::string& target, std::string& reason) {
  const std::string directory = directoryOf(target);
  std::string name;
  int error = EEXIST;
  for (int i = 0; i < kMaxNames && error == EEXIST; ++i) {
    const bool named = randomName(name);
    std::string path = directory + name;
    if (named) descriptor_ = Descriptor(::open(path.c_str(), kCreateFlags, 0666));
    error = descriptor_.isOpen() ? 0 : errno;
    if (error == 0) path_ = std::move(path);  // takes no memory: the file is never lost sight of
  }
  target_ = target;
  if (error == ENOENT) reason = "the directory " + directory + " does not exist";
  if (error != 0 && error != ENOENT) reason = directory + ": " + systemReason(error);
  return error == 0;
}

bool TemporaryFile::write(const char* data, std::size_t size) noexcept {
  while (size > 0) {
    const ssize_t written = ::write(descriptor_.number(), data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      error_ = written < 0 ? errno : EIO;
      return false;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

bool TemporaryFile::commit(std::string& reason) {
  // Made before the rename: behind it nothing may fail.
  const std::string directory = directoryOf(target_);
  struct stat status {};
  // Not every file system has permissions to take over; the document counts.
  if (::stat(target_.c_str(), &status) == 0) ::fchmod(descriptor_.number(), status.st_mode & 0777);
  if (::fsync(descriptor_.number()) != 0 || !descriptor_.close() ||
      std::rename(path_.c_str(), target_.c_str()) != 0) {
    reason = target_ + ": " + systemReason(errno);
    return false;
  }
  path_.clear();
  syncDirectory(directory);
  return true;
}

}  // namespace desk
