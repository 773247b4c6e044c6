// What a library or program says about itself to the loader.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "desk/doctor/arm_attributes.h"
#include "desk/doctor/build_note.h"
#include "desk/script/elf_image.h"

namespace desk::doctor {

/// A name that the file takes from others or offers to them.
struct DynamicSymbol {
  std::string name;      ///< as the loader compares it
  std::string readable;  ///< as a programmer reads it: with argument types for C++
  std::string version;   ///< "GLIBC_2.17"; empty: any
  std::string library;   ///< the library that the version is asked of; empty for own ones
  bool defined;          ///< offered, else taken
  bool weak;             ///< loading goes on without it
};

/// As far as one can tell a shared library from a program.
enum class FileKind { Library, Program, ObjectFile, CoreDump, Unknown };

/// All that the doctor judges a file by.
struct ElfFile {
  std::string path;
  std::string architecture;  ///< "x86-64", "arm64", "armhf", or words for any other
  FileKind kind = FileKind::Library;
  ArmProcessor processor;  ///< of an armhf file
  BuildNote note;          ///< of a plug-in
  std::string soname;      ///< what others call it; empty: by its file name
  std::vector<std::string> needed;
  std::vector<DynamicSymbol> symbols;
  std::set<std::string> offeredVersions;
  bool executableStack = false;
  bool protectedTables = false;  ///< relocated at load and write-protected from then on
  bool textRelocations = false;
  bool uniqueSymbols = false;   ///< the loader will never unload it
  std::string searchPath;       ///< of its own for libraries
  std::set<std::string> texts;  ///< those of readElf's `texts` that stand anywhere in it
};

/// Reads a file of any architecture; `texts` are looked for in it. Throws Error when it cannot be
/// read, is no ELF file, lacks its end or its section headers, or is far larger than such files
/// are.
ElfFile readElf(const std::string& path, const std::vector<std::string>& texts = {});

/// Throws Error with one sentence where headers contradict themselves or each other, and where the
/// sections are missing that say what the file needs and offers: it would pass for one that needs
/// and offers nothing. `path` is for the sentence.
///
/// What the headers do not show, such as damaged code, only a checksum finds.
void requireSound(const script::ElfImage& image, const std::string& path);

}  // namespace desk::doctor
