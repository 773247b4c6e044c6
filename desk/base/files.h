// Files of this PC and their owners.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "desk/base/errors.h"

namespace desk {

/// What the system says about an error number.
std::string systemReason(int error);

/// The name that stands for standard input and standard output wherever a file is named.
inline constexpr char kStandardStream[] = "-";

/// What to say of a file that cannot be read, or written, for a reason: "cannot read a.json: No
/// such file or directory".
Error cannotRead(const std::string& file, const std::string& reason);
Error cannotWrite(const std::string& file, const std::string& reason);

/// Throws cannotRead for a file that cannot be opened for reading, and for a folder.
void requireReadable(const std::string& file);

/// Writes a file of these bytes, or to standard output. Throws cannotWrite when they do not all
/// arrive; of standard output the program's end tells.
void writeFile(const std::string& file, std::string_view bytes);

/// Owns an open file, or none, and closes it on destruction.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}  ///< below zero: none
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { close(); }

  bool isOpen() const { return number_ >= 0; }
  int number() const { return number_; }

  /// Returns whether what was written is known to have arrived; true also where none is open.
  bool close();

 private:
  int number_ = -1;
};

/// A file that takes its target's place only once it is finished. Lies beside its target under a
/// name of its own and is removed on destruction unless it was committed. Until then the target is
/// as it was.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// Creates the file. The directory of `target` must exist.
  bool create(const std::string& target, std::string& reason);

  /// Appends all of the bytes, or fails; `error()` then tells why.
  bool write(const char* data, std::size_t size) noexcept;

  /// Brings the bytes to the disk and renames the file over the target, whose permissions it takes
  /// over. After a failure the target is as it was.
  bool commit(std::string& reason);

  const std::string& path() const { return path_; }

  /// The system's error number of the failed write.
  int error() const { return error_; }

 private:
  std::string target_;
  std::string path_;  ///< empty when there is no file to remove
  Descriptor descriptor_;
  int error_ = 0;
};

}  // namespace desk
