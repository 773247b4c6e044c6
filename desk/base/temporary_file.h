// A file that takes its target's place only once it is finished.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace desk {

/// Lies beside its target under a name of its own and is removed on destruction unless it was
/// committed. Until then the target is as it was.
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
  bool close();

  std::string target_;
  std::string path_;  ///< empty when there is no file to remove
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace desk
