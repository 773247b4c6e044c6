// Access to the parts of a program or library file of any architecture.
#pragma once

#include <gelf.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace desk::doctor {

/// An open ELF file. Whatever the file says, nothing is read outside of it.
class ElfImage {
 public:
  /// Throws Error when the file cannot be read or is no ELF file.
  explicit ElfImage(const std::string& path);
  ~ElfImage();
  ElfImage(const ElfImage&) = delete;
  ElfImage& operator=(const ElfImage&) = delete;

  const GElf_Ehdr& header() const { return header_; }

  /// A section and its contents.
  struct Section {
    GElf_Shdr header;
    Elf_Data* data;
    /// d_size / sh_entsize.
    int count() const;
  };

  /// The first section of the type, if there is one with contents.
  std::optional<Section> section(GElf_Word type) const;
  void forEachSegment(const std::function<void(const GElf_Phdr&)>& visit) const;

  /// The text at `offset` of the string table that `section` refers to; empty when there is none.
  std::string text(const Section& section, GElf_Xword offset) const;

  /// How many bytes the file has, and how many it must have for what its headers speak of.
  std::uint64_t size() const;
  std::uint64_t expectedSize() const;
  /// Whether the file holds the zero-terminated text anywhere.
  bool holdsText(const std::string& text) const;

 private:
  std::string path_;
  int file_;
  Elf* elf_ = nullptr;
  GElf_Ehdr header_{};
};

}  // namespace desk::doctor
