#include "desk/doctor/elf_file.h"

#include <algorithm>
#include <cstdint>

#include "desk/base/errors.h"

namespace desk::doctor {

namespace {

using script::ElfImage;

bool headerIsSound(const GElf_Ehdr& header) {
  const unsigned char* const identity = header.e_ident;
  const bool wide = identity[EI_CLASS] == ELFCLASS64;
  const bool usualSystem =
      identity[EI_OSABI] == ELFOSABI_SYSV || identity[EI_OSABI] == ELFOSABI_GNU;
  const std::size_t segmentSize = wide ? sizeof(Elf64_Phdr) : sizeof(Elf32_Phdr);
  return usualSystem && identity[EI_VERSION] == EV_CURRENT && header.e_version == EV_CURRENT &&
         std::all_of(identity + EI_ABIVERSION, identity + EI_NIDENT,
                     [](unsigned char byte) { return byte == 0; }) &&
         (header.e_phnum == 0 || header.e_phentsize == segmentSize);
}

/// Segments that are loaded one behind the other, each at a place that its alignment allows.
bool segmentsAreSound(const ElfImage& image) {
  constexpr std::uint64_t kLargestImage = 1ULL << 32;
  bool sound = true;
  std::uint64_t end = 0;
  image.forEachSegment([&](const GElf_Phdr& segment) {
    if (segment.p_type != PT_LOAD) return;
    const std::uint64_t alignment = std::max<std::uint64_t>(segment.p_align, 1);
    sound = sound && (alignment & (alignment - 1)) == 0 && segment.p_vaddr >= end &&
            (segment.p_vaddr - segment.p_offset) % alignment == 0 &&
            segment.p_filesz <= segment.p_memsz && segment.p_memsz < kLargestImage;
    end = segment.p_vaddr + segment.p_memsz;
  });
  return sound;
}

/// The loader finds the table of what a file needs by a segment, the doctor by a section.
bool tablesAgree(const ElfImage& image) {
  const auto section = image.section(SHT_DYNAMIC);
  bool agree = !section;
  image.forEachSegment([&](const GElf_Phdr& segment) {
    if (segment.p_type != PT_DYNAMIC) return;
    agree = !section || (segment.p_offset == section->header.sh_offset &&
                         segment.p_vaddr == section->header.sh_addr);
  });
  return agree;
}

bool isLinked(const ElfImage& image) {
  bool linked = false;
  image.forEachSegment(
      [&](const GElf_Phdr& segment) { linked = linked || segment.p_type == PT_DYNAMIC; });
  return linked;
}

}  // namespace

void requireSound(const ElfImage& image, const std::string& path) {
  if (!headerIsSound(image.header())) {
    throw Error(kExitIoError, path + " is damaged: its header is none that Linux takes");
  }
  if (isLinked(image) && !image.section(SHT_DYNAMIC)) {
    throw Error(kExitIoError, path +
                                  " lacks the sections that say what it needs and offers: they "
                                  "were removed, or it holds debugging information only");
  }
  if (!segmentsAreSound(image) || !tablesAgree(image)) {
    throw Error(kExitIoError, path + " is damaged: its segments cannot be loaded as they stand");
  }
}

}  // namespace desk::doctor
