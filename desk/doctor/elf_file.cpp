#include "desk/doctor/elf_file.h"

#include <cxxabi.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <regex>

#include "desk/base/errors.h"

namespace desk::doctor {

namespace {

using script::ElfImage;

/// Whether a name could be spelt out at length: each of its references (S_, T0_) repeats an earlier
/// type, so that few characters can stand for millions.
bool explodes(const std::string& name) {
  constexpr std::size_t kMostCharacters = 500;
  constexpr std::ptrdiff_t kMostReferences = 16;
  static const std::regex reference("S[0-9A-Z]*_|T[0-9A-Z]*_");
  return name.size() > kMostCharacters ||
         std::distance(std::sregex_iterator(name.begin(), name.end(), reference),
                       std::sregex_iterator()) > kMostReferences;
}

std::string readableName(const std::string& name) {
  if (name.rfind("_Z", 0) != 0 || explodes(name)) return name;
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> words(
      abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
  return status == 0 ? words.get() : name;
}

std::string architectureOf(const GElf_Ehdr& header) {
  const bool little = header.e_ident[EI_DATA] == ELFDATA2LSB;
  const bool wide = header.e_ident[EI_CLASS] == ELFCLASS64;
  if (header.e_machine == EM_X86_64) return wide ? "x86-64" : "x32";
  if (header.e_machine == EM_386) return "32-bit PC (i386)";
  if (header.e_machine == EM_AARCH64 && little) return wide ? "arm64" : "arm64 with short pointers";
  if (header.e_machine == EM_ARM && little) {
    return (header.e_flags & EF_ARM_ABI_FLOAT_SOFT) != 0 ? "armel (no floating-point registers)"
                                                         : "armhf";
  }
  return "machine " + std::to_string(header.e_machine) + (little ? "" : ", big-endian");
}

/// What a version index of a symbol stands for.
struct VersionName {
  std::string version;
  std::string library;  ///< empty: the file's own
};
using VersionNames = std::map<unsigned, VersionName>;

constexpr int kMostVersions = 0x7FFF;  // so many fit into an index
constexpr int kMostSymbols = 200'000;
constexpr int kMostEntries = 1000;
constexpr GElf_Word kLongestNote = 4096;
constexpr std::uint64_t kLargestPlugin = 64 << 20;

/// place + step, saturated: a corrupt offset then points past every section and reads fail.
int further(int place, GElf_Word step) {
  return step > static_cast<GElf_Word>(INT_MAX - place) ? INT_MAX : place + static_cast<int>(step);
}

void readNeededVersions(const ElfImage& image, VersionNames& names) {
  const auto section = image.section(SHT_GNU_verneed);
  GElf_Verneed need;
  int at = 0;
  int details = 0;  // a damaged file may send us round and round
  for (int seen = 0; section && seen < kMostVersions; ++seen, at = further(at, need.vn_next)) {
    if (gelf_getverneed(section->data, at, &need) == nullptr) return;
    int detailAt = further(at, need.vn_aux);
    for (int detail = 0; detail < need.vn_cnt && ++details < kMostVersions; ++detail) {
      GElf_Vernaux version;
      if (gelf_getvernaux(section->data, detailAt, &version) == nullptr) return;
      names[version.vna_other] = {image.text(*section, version.vna_name),
                                  image.text(*section, need.vn_file)};
      detailAt = further(detailAt, version.vna_next);
    }
    if (need.vn_next == 0) return;
  }
}

void readOfferedVersions(const ElfImage& image, VersionNames& names, ElfFile& file) {
  const auto section = image.section(SHT_GNU_verdef);
  GElf_Verdef offer;
  int at = 0;
  for (int seen = 0; section && seen < kMostVersions; ++seen, at = further(at, offer.vd_next)) {
    GElf_Verdaux version;
    if (gelf_getverdef(section->data, at, &offer) == nullptr ||
        gelf_getverdaux(section->data, further(at, offer.vd_aux), &version) == nullptr) {
      return;
    }
    const std::string name = image.text(*section, version.vda_name);
    // The base version is the file's own name and no version of a symbol.
    if ((offer.vd_flags & VER_FLG_BASE) == 0) {
      names[offer.vd_ndx] = {name, ""};
      file.offeredVersions.insert(name);
    }
    if (offer.vd_next == 0) return;
  }
}

unsigned versionIndex(const std::optional<ElfImage::Section>& section, int symbol) {
  GElf_Versym index = 0;
  if (section) gelf_getversym(section->data, symbol, &index);
  return index & 0x7FFFU;  // the highest bit hides old versions from new links
}

void readSymbols(const ElfImage& image, ElfFile& file) {
  VersionNames names;
  readNeededVersions(image, names);
  readOfferedVersions(image, names, file);
  const auto section = image.section(SHT_DYNSYM);
  const auto versions = image.section(SHT_GNU_versym);
  std::size_t size = 0;
  for (int index = 1; section && index < section->count(); ++index) {
    GElf_Sym symbol;
    if (gelf_getsym(section->data, index, &symbol) == nullptr) return;
    const unsigned binding = GELF_ST_BIND(symbol.st_info);
    const std::string name = image.text(*section, symbol.st_name);
    size += name.size();
    if (index > kMostSymbols || size > kLargestPlugin) {
      throw Error(kExitIoError, file.path + " has more symbols than are read of a file");
    }
    if (binding == STB_LOCAL || name.empty() || symbol.st_shndx == SHN_ABS) continue;
    const VersionName& version = names[versionIndex(versions, index)];
    file.symbols.push_back({name, readableName(name), version.version, version.library,
                            symbol.st_shndx != SHN_UNDEF, binding == STB_WEAK});
    file.uniqueSymbols = file.uniqueSymbols || binding == STB_GNU_UNIQUE;
  }
}

FileKind kindOf(GElf_Half type, bool program) {
  if (type == ET_DYN) return program ? FileKind::Program : FileKind::Library;
  if (type == ET_EXEC) return FileKind::Program;
  if (type == ET_REL) return FileKind::ObjectFile;
  return type == ET_CORE ? FileKind::CoreDump : FileKind::Unknown;
}

BuildNote readNote(const ElfImage& image) {
  for (const ElfImage::Section& section : image.sections(SHT_NOTE)) {
    GElf_Nhdr header;
    std::size_t name = 0;
    std::size_t text = 0;
    std::size_t at = 0;
    while ((at = gelf_getnote(section.data, at, &header, &name, &text)) != 0) {
      const std::string_view bytes = section.bytes();
      const std::string_view owner(kBuildNoteOwner, sizeof kBuildNoteOwner);
      if (header.n_type == 1 && bytes.substr(name, header.n_namesz) == owner) {
        return readBuildNote(bytes.substr(text, std::min(header.n_descsz, kLongestNote)));
      }
    }
  }
  return {};
}

struct LoaderFlags {
  bool now = false;
  bool program = false;
};

void readEntry(const GElf_Dyn& entry, const std::string& text, ElfFile& file, LoaderFlags& flags) {
  const GElf_Xword value = entry.d_un.d_val;
  switch (entry.d_tag) {
    case DT_NEEDED:
      file.needed.push_back(text);
      break;
    case DT_SONAME:
      file.soname = text;
      break;
    case DT_RPATH:
    case DT_RUNPATH:
      file.searchPath = text;
      break;
    case DT_TEXTREL:
      file.textRelocations = true;
      break;
    case DT_FLAGS:
      file.textRelocations = file.textRelocations || (value & DF_TEXTREL) != 0;
      flags.now = flags.now || (value & DF_BIND_NOW) != 0;
      break;
    case DT_FLAGS_1:
      flags.now = flags.now || (value & DF_1_NOW) != 0;
      flags.program = (value & DF_1_PIE) != 0;
      break;
    default:
      break;
  }
}

LoaderFlags readDynamicEntries(const ElfImage& image, ElfFile& file) {
  LoaderFlags flags;
  const auto section = image.section(SHT_DYNAMIC);
  for (int index = 0; section && index < std::min(section->count(), kMostEntries); ++index) {
    GElf_Dyn entry;
    if (gelf_getdyn(section->data, index, &entry) == nullptr || entry.d_tag == DT_NULL) break;
    readEntry(entry, image.text(*section, entry.d_un.d_val), file, flags);
  }
  return flags;
}

}  // namespace

ElfFile readElf(const std::string& path, const std::vector<std::string>& texts) {
  const ElfImage image(path);
  requireSound(image, path);
  if (!texts.empty() && image.size() > kLargestPlugin) {
    throw Error(kExitIoError, path + " is larger than 64 MiB, and a plug-in has less than one");
  }
  ElfFile file;
  file.path = path;
  file.architecture = architectureOf(image.header());
  const LoaderFlags flags = readDynamicEntries(image, file);
  file.kind = kindOf(image.header().e_type, flags.program);
  file.note = readNote(image);
  if (file.architecture == "armhf") {
    const auto attributes = image.section(SHT_ARM_ATTRIBUTES);
    if (attributes) file.processor = readArmAttributes(attributes->bytes());
  }
  file.executableStack = true;  // what the loader assumes unless the file says otherwise
  image.forEachSegment([&](const GElf_Phdr& segment) {
    if (segment.p_type == PT_GNU_STACK) file.executableStack = (segment.p_flags & PF_X) != 0;
    if (segment.p_type == PT_GNU_RELRO) file.protectedTables = flags.now;
  });
  readSymbols(image, file);
  for (const std::string& text : texts) {
    if (image.holdsText(text)) file.texts.insert(text);
  }
  return file;
}

}  // namespace desk::doctor
