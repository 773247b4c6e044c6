#include "desk/doctor/elf_image.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "desk/base/errors.h"

namespace desk::doctor {

namespace {

std::string_view rawFile(Elf* elf) {
  std::size_t size = 0;
  const char* bytes = elf_rawfile(elf, &size);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, size);
}

/// Sizes in files may be wider than this machine's.
std::size_t clamped(GElf_Xword size) {
  return static_cast<std::size_t>(std::min<GElf_Xword>(size, SIZE_MAX));
}

/// At most the largest number: a file may speak of more.
std::uint64_t sum(std::uint64_t offset, std::uint64_t size) {
  return size > UINT64_MAX - offset ? UINT64_MAX : offset + size;
}

}  // namespace

ElfImage::ElfImage(const std::string& path)
    // Without O_NONBLOCK a pipe would be waited for.
    : path_(path), file_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
  if (file_ < 0) throw Error(kExitIoError, "cannot read " + path + ": " + std::strerror(errno));
  elf_version(EV_CURRENT);
  elf_ = elf_begin(file_, ELF_C_READ, nullptr);
  if (elf_ == nullptr || elf_kind(elf_) != ELF_K_ELF || gelf_getehdr(elf_, &header_) == nullptr) {
    elf_end(elf_);
    ::close(file_);
    throw Error(kExitIoError, path + " is neither a library nor a program for Linux (no ELF file)");
  }
}

ElfImage::~ElfImage() {
  elf_end(elf_);
  ::close(file_);
}

int ElfImage::Section::count() const {
  if (header.sh_entsize == 0) return 0;
  return static_cast<int>(std::min<std::uint64_t>(data->d_size / header.sh_entsize, INT32_MAX));
}

std::optional<ElfImage::Section> ElfImage::section(GElf_Word type) const {
  for (Elf_Scn* at = elf_nextscn(elf_, nullptr); at != nullptr; at = elf_nextscn(elf_, at)) {
    Section section{};
    if (gelf_getshdr(at, &section.header) == nullptr || section.header.sh_type != type) continue;
    section.data = elf_getdata(at, nullptr);
    if (section.data != nullptr && section.data->d_buf != nullptr) return section;
  }
  return std::nullopt;
}

void ElfImage::forEachSegment(const std::function<void(const GElf_Phdr&)>& visit) const {
  std::size_t count = 0;
  if (elf_getphdrnum(elf_, &count) != 0) return;
  for (std::size_t index = 0; index < count; ++index) {
    GElf_Phdr segment;
    if (gelf_getphdr(elf_, static_cast<int>(index), &segment) != nullptr) visit(segment);
  }
}

std::string ElfImage::text(const Section& section, GElf_Xword offset) const {
  const char* found = elf_strptr(elf_, section.header.sh_link, clamped(offset));
  return found == nullptr ? "" : found;
}

std::uint64_t ElfImage::size() const {
  return rawFile(elf_).size();
}

std::uint64_t ElfImage::expectedSize() const {
  const std::uint64_t sections = std::uint64_t{header_.e_shnum} * header_.e_shentsize;
  std::uint64_t expected = sections == 0 ? 0 : sum(header_.e_shoff, sections);
  forEachSegment([&](const GElf_Phdr& segment) {
    // An empty one may stand anywhere: files of debugging information have them beyond their end.
    if (segment.p_type == PT_LOAD && segment.p_filesz != 0) {
      expected = std::max(expected, sum(segment.p_offset, segment.p_filesz));
    }
  });
  return expected;
}

bool ElfImage::holdsText(const std::string& text) const {
  return rawFile(elf_).find('\0' + text + '\0') != std::string_view::npos;
}

}  // namespace desk::doctor
