// Access to the parts of a program or library file of any architecture.
#pragma once

#include <gelf.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desk/base/files.h"

namespace desk::script {

/// An open ELF file. Whatever the file says, nothing is read outside of it.
class ElfImage {
 public:
  /// Throws Error with one sentence when the file cannot be read, is no regular file or far too
  /// large, is no ELF file (and what it seems to be), or is shorter than its headers say.
  explicit ElfImage(const std::string& path);

  const GElf_Ehdr& header() const { return header_; }

  /// A section and its contents.
  struct Section {
    GElf_Shdr header;
    Elf_Data* data;
    /// d_size / sh_entsize.
    int count() const;
    std::string_view bytes() const { return {static_cast<const char*>(data->d_buf), data->d_size}; }
  };

  /// Those of the type that have contents, and the first of them.
  std::vector<Section> sections(GElf_Word type) const;
  std::optional<Section> section(GElf_Word type) const;
  void forEachSegment(const std::function<void(const GElf_Phdr&)>& visit) const;

  /// The text at `offset` of the string table that `section` refers to, up to 4096 bytes of it;
  /// empty when there is none.
  std::string text(const Section& section, GElf_Xword offset) const;

  std::uint64_t size() const;
  /// Whether the file holds the zero-terminated text anywhere.
  bool holdsText(const std::string& text) const;

 private:
  struct End {
    void operator()(Elf* elf) const { elf_end(elf); }
  };

  Elf* elf() const { return elf_.get(); }
  std::string_view bytes() const;
  /// How many bytes the file must have for what its headers speak of.
  std::uint64_t expectedSize() const;

  Descriptor file_;
  std::unique_ptr<Elf, End> elf_;
  GElf_Ehdr header_{};
};

/// Throws Error, as `ElfImage` does, for what must not be handed to the loader: a file that is cut
/// short ends the process there.
void requireWholeElf(const std::string& path);

}  // namespace desk::script
