// The libraries of a controller, as files on this machine.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "desk/doctor/elf_file.h"

namespace desk::doctor {

/// Libraries and programs that a plug-in will meet.
class Sysroot {
 public:
  /// `paths`: folders and files, separated by colons. Of a folder that is a file system's root, its
  /// usual library folders count; of any other, the files in it. Throws Error when a path does not
  /// exist or a named file is no ELF file. `also`: folders, likewise separated, for libraries that
  /// those files need.
  explicit Sysroot(const std::string& paths, const std::string& also = "");

  /// The library that files of the architecture call `soname`. One for another architecture when
  /// the target has no other, null when it has none at all. Throws Error when a file cannot be
  /// read.
  const ElfFile* library(const std::string& soname, const std::string& architecture) const;

  /// Whether one of the files that were named one by one offers the symbol, or a library that they
  /// need.
  bool offers(const std::string& symbol) const;

  /// The libraries that the named files and their libraries need, each by the name they ask for:
  /// all, and those that are not there and do not belong to the standard runtime.
  std::set<std::string> neededLibraries() const;
  std::vector<std::string> missingLibraries() const;

  const std::string& paths() const { return paths_; }
  /// The files that were named one by one.
  const std::vector<ElfFile>& files() const { return files_; }

 private:
  void add(const std::string& path);
  const ElfFile& read(const std::string& path) const;
  void collect() const;
  void collectOffers(const ElfFile& file) const;

  std::string paths_;
  std::vector<std::string> folders_;
  std::vector<ElfFile> files_;
  mutable std::map<std::string, ElfFile> read_;  ///< by path
  mutable std::set<std::string> collected_;      ///< files whose symbols are in `offers_`
  mutable std::set<std::string> offers_;
  mutable std::map<std::string, bool> libraries_;  ///< whether each is there
};

}  // namespace desk::doctor
