#include "desk/doctor/function_tables.h"

#include <map>

namespace desk {

namespace {

/// Where the loader writes addresses, and which.
using Pointers = std::map<GElf_Addr, GElf_Addr>;

struct Kinds {
  GElf_Xword relative;  ///< an address of the file itself
  GElf_Xword absolute;  ///< that of a symbol
};

Kinds kindsFor(unsigned machine) {
  switch (machine) {
    case EM_X86_64:
      return {R_X86_64_RELATIVE, R_X86_64_64};
    case EM_AARCH64:
      return {R_AARCH64_RELATIVE, R_AARCH64_ABS64};
    case EM_ARM:
      return {R_ARM_RELATIVE, R_ARM_ABS32};
    default:
      return {~GElf_Xword{0}, ~GElf_Xword{0}};
  }
}

class PointerReader {
 public:
  explicit PointerReader(const ElfImage& image)
      : image_(image),
        kinds_(kindsFor(image.header().e_machine)),
        symbols_(image.section(SHT_DYNSYM)) {}

  Pointers read() {
    image_.forEachSection(SHT_RELA, [&](const ElfImage::Section& section) {
      for (int index = 0; index < section.count(); ++index) {
        GElf_Rela entry;
        if (gelf_getrela(section.data, index, &entry) == nullptr) return;
        add(entry.r_offset, entry.r_info, static_cast<GElf_Addr>(entry.r_addend));
      }
    });
    // Without an addend of its own, an entry has it where it will write.
    image_.forEachSection(SHT_REL, [&](const ElfImage::Section& section) {
      for (int index = 0; index < section.count(); ++index) {
        GElf_Rel entry;
        if (gelf_getrel(section.data, index, &entry) == nullptr) return;
        add(entry.r_offset, entry.r_info, image_.pointerAt(entry.r_offset));
      }
    });
    return std::move(pointers_);
  }

 private:
  void add(GElf_Addr place, GElf_Xword info, GElf_Addr addend) {
    if (GELF_R_TYPE(info) == kinds_.relative) pointers_[place] = addend;
    GElf_Sym symbol;
    if (GELF_R_TYPE(info) == kinds_.absolute && symbols_ &&
        gelf_getsym(symbols_->data, static_cast<int>(GELF_R_SYM(info)), &symbol) != nullptr) {
      pointers_[place] = symbol.st_value + addend;
    }
  }

  const ElfImage& image_;
  Kinds kinds_;
  std::optional<ElfImage::Section> symbols_;
  Pointers pointers_;
};

}  // namespace

std::set<std::string> functionNames(const ElfImage& image) {
  const Pointers pointers = PointerReader(image).read();
  std::set<std::string> names;
  for (const auto& [place, target] : pointers) {
    const auto beside = pointers.find(place + image.pointerSize());
    if (beside == pointers.end() || !image.isCode(beside->second)) continue;
    std::string name = image.textAt(target);
    if (!name.empty()) names.insert(std::move(name));
  }
  return names;
}

}  // namespace desk
