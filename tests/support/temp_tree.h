// A directory for one test, removed with everything in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

class TempTree {
 public:
  TempTree() {
    std::string pattern = (std::filesystem::temp_directory_path() / "cus-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = std::filesystem::canonical(pattern);
  }
  ~TempTree() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempTree(const TempTree&) = delete;
  TempTree& operator=(const TempTree&) = delete;

  std::filesystem::path path(const std::string& name = {}) const { return path_ / name; }

  /// Writes a file, making the directories above it.
  void write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }

  std::string read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path_;
};
