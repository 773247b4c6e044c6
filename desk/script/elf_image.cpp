#include "desk/script/elf_image.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "desk/base/errors.h"
#include "desk/base/files.h"

namespace desk::script {

namespace {

constexpr std::int64_t kLargestFile = 1 << 30;
constexpr std::size_t kLongestText = 4096;

/// Files that are taken for plug-ins, by their first bytes.
struct Kind {
  std::string_view begin;
  const char* words;
};
constexpr Kind kKinds[] = {
    {"\x7F"
     "ELF",
     "damaged or cut short: its first 64 bytes are no header of an ELF file"},
    {"!<arch>", "an archive (a static library or a Debian package)"},
    {"MZ", "a program or library for Windows"},
    {"#!", "a script"},
    {"\x1F\x8B", "compressed"},
    {"PK", "a zip archive"},
};

/// What a file is that is no ELF file.
std::string kindOf(int file) {
  char bytes[8] = {};
  const ssize_t size = ::pread(file, bytes, sizeof bytes, 0);
  if (size == 0) return "empty";
  for (const Kind& kind : kKinds) {
    if (size > 0 &&
        std::string_view(bytes, static_cast<std::size_t>(size)).substr(0, kind.begin.size()) ==
            kind.begin) {
      return kind.words;
    }
  }
  return "neither a library nor a program for Linux (no ELF file)";
}

/// Opens a regular file; throws Error with the reason when it cannot be read as one.
Descriptor openFile(const std::string& path) {
  // Without O_NONBLOCK a pipe would be waited for.
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.number(), &status) != 0) {
    throw Error(kExitIoError, "cannot read " + path + ": " + systemReason(errno));
  }
  if (S_ISDIR(status.st_mode)) throw Error(kExitIoError, path + " is a folder: name a file in it");
  if (!S_ISREG(status.st_mode)) throw Error(kExitIoError, path + " is not a regular file");
  if (status.st_size > kLargestFile) {
    throw Error(kExitIoError, path + " is larger than 1 GiB, more than is read of a file");
  }
  return file;
}

/// At most the largest number: a file may speak of more.
std::uint64_t sum(std::uint64_t offset, std::uint64_t size) {
  return size > UINT64_MAX - offset ? UINT64_MAX : offset + size;
}

}  // namespace

ElfImage::ElfImage(const std::string& path) : file_(openFile(path)) {
  elf_version(EV_CURRENT);
  elf_.reset(elf_begin(file_.number(), ELF_C_READ_MMAP, nullptr));
  if (elf_ == nullptr || elf_kind(elf()) != ELF_K_ELF || gelf_getehdr(elf(), &header_) == nullptr) {
    throw Error(kExitIoError, path + " is " + kindOf(file_.number()));
  }
  const std::uint64_t expected = expectedSize();
  if (size() < expected) {
    throw Error(kExitIoError,
                path + (expected > std::uint64_t{kLargestFile} ? " is damaged" : " is cut short") +
                    ": it has " + std::to_string(size()) + " of " + std::to_string(expected) +
                    " bytes");
  }
}

int ElfImage::Section::count() const {
  if (header.sh_entsize == 0) return 0;
  return static_cast<int>(std::min<std::uint64_t>(data->d_size / header.sh_entsize, INT32_MAX));
}

std::vector<ElfImage::Section> ElfImage::sections(GElf_Word type) const {
  std::vector<Section> found;
  for (Elf_Scn* at = elf_nextscn(elf(), nullptr); at != nullptr; at = elf_nextscn(elf(), at)) {
    Section section{};
    if (gelf_getshdr(at, &section.header) == nullptr || section.header.sh_type != type) continue;
    section.data = elf_getdata(at, nullptr);
    if (section.data != nullptr && section.data->d_buf != nullptr) found.push_back(section);
  }
  return found;
}

std::optional<ElfImage::Section> ElfImage::section(GElf_Word type) const {
  const std::vector<Section> found = sections(type);
  return found.empty() ? std::nullopt : std::optional<Section>(found.front());
}

void ElfImage::forEachSegment(const std::function<void(const GElf_Phdr&)>& visit) const {
  std::size_t count = 0;
  if (elf_getphdrnum(elf(), &count) != 0) return;
  for (std::size_t index = 0; index < count; ++index) {
    GElf_Phdr segment;
    if (gelf_getphdr(elf(), static_cast<int>(index), &segment) != nullptr) visit(segment);
  }
}

std::string ElfImage::text(const Section& section, GElf_Xword offset) const {
  Elf_Scn* const table = elf_getscn(elf(), section.header.sh_link);
  GElf_Shdr header;
  if (gelf_getshdr(table, &header) == nullptr || header.sh_type != SHT_STRTAB) return "";
  const Elf_Data* const data = elf_getdata(table, nullptr);
  if (data == nullptr || data->d_buf == nullptr || offset >= data->d_size) return "";
  const auto at = static_cast<std::size_t>(offset);
  const char* const text = static_cast<const char*>(data->d_buf) + at;
  return std::string(text, ::strnlen(text, std::min(kLongestText, data->d_size - at)));
}

std::uint64_t ElfImage::size() const {
  return bytes().size();
}

std::string_view ElfImage::bytes() const {
  std::size_t size = 0;
  const char* bytes = elf_rawfile(elf(), &size);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, size);
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
  const std::string_view whole = bytes();
  const std::string_view sought(text.c_str(), text.size() + 1);  // with its end
  std::size_t at = whole.find(sought);
  while (at != std::string_view::npos && at != 0 && whole[at - 1] != '\0') {
    at = whole.find(sought, at + 1);
  }
  return at != std::string_view::npos;
}

void requireWholeElf(const std::string& path) {
  const ElfImage image(path);
}

}  // namespace desk::script
