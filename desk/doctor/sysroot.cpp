#include "desk/doctor/sysroot.h"

#include <filesystem>
#include <sstream>

#include "desk/base/errors.h"
#include "desk/doctor/contract.h"
#include "desk/doctor/contract_names.h"

namespace desk::doctor {

namespace {

namespace fs = std::filesystem;

/// The folder itself and those below it where a root has its libraries.
std::vector<std::string> libraryFolders(const fs::path& root) {
  std::vector<std::string> folders = {root.string()};
  std::error_code ignored;
  for (const char* below : {"lib", "lib64", "usr/lib", "usr/lib64", "usr/local/lib"}) {
    const fs::path folder = root / below;
    if (!fs::is_directory(folder, ignored)) continue;
    folders.push_back(folder.string());
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
      // one folder per architecture: lib/arm-linux-gnueabihf
      const bool triple = entry.path().filename().string().find("-linux-") != std::string::npos;
      if (triple && entry.is_directory(ignored)) folders.push_back(entry.path().string());
    }
  }
  return folders;
}

std::vector<std::string> split(const std::string& paths) {
  std::vector<std::string> result;
  std::istringstream parts(paths);
  for (std::string path; std::getline(parts, path, ':');) {
    if (path.empty()) continue;
    if (!fs::exists(path)) throw Error(kExitIoError, "there is no " + path);
    result.push_back(path);
  }
  return result;
}

}  // namespace

Sysroot::Sysroot(const std::string& paths, const std::string& also) : paths_(paths) {
  for (const std::string& path : split(paths)) add(path);
  for (const std::string& path : split(also)) {
    if (fs::is_directory(path)) add(path);
  }
}

void Sysroot::add(const std::string& path) {
  if (!fs::is_directory(path)) {
    files_.push_back(readElf(path));
    return;
  }
  const std::vector<std::string> folders = libraryFolders(path);
  folders_.insert(folders_.end(), folders.begin(), folders.end());
}

const ElfFile& Sysroot::read(const std::string& path) const {
  const auto known = read_.find(path);
  return known != read_.end() ? known->second : read_.emplace(path, readElf(path)).first->second;
}

const ElfFile* Sysroot::library(const std::string& soname, const std::string& architecture) const {
  const ElfFile* foreign = nullptr;
  // Like the loader, go on past those that are for another machine, and no further than need be.
  const auto suits = [&](const ElfFile& file) {
    if (file.architecture == architecture) return true;
    if (foreign == nullptr) foreign = &file;
    return false;
  };
  for (const ElfFile& file : files_) {
    const std::string name = fs::path(file.path).filename().string();
    if ((soname == file.soname || soname == name) && suits(file)) return &file;
  }
  for (const std::string& folder : folders_) {
    const fs::path candidate = fs::path(folder) / fs::path(soname).filename();
    std::error_code ignored;
    if (!fs::is_regular_file(candidate, ignored)) continue;
    const ElfFile& file = read(candidate.string());
    if (suits(file)) return &file;
  }
  return foreign;
}

void Sysroot::collectOffers(const ElfFile& file) const {
  if (!collected_.insert(file.path).second) return;
  for (const DynamicSymbol& symbol : file.symbols) {
    if (symbol.defined) offers_.insert(symbol.name);
  }
  for (const std::string& soname : file.needed) {
    const ElfFile* const needed = library(soname, file.architecture);
    libraries_[soname] = needed != nullptr;
    if (needed != nullptr) collectOffers(*needed);
  }
}

void Sysroot::collect() const {
  for (const ElfFile& file : files_) collectOffers(file);
}

bool Sysroot::offers(const std::string& symbol) const {
  collect();
  return offers_.count(symbol) != 0;
}

std::set<std::string> Sysroot::neededLibraries() const {
  collect();
  std::set<std::string> names;
  for (const auto& [name, there] : libraries_) names.insert(name);
  return names;
}

std::vector<std::string> Sysroot::missingLibraries() const {
  collect();
  std::vector<std::string> names;
  for (const auto& [name, there] : libraries_) {
    if (!there && !isAmong(name, contract::kRuntime)) names.push_back(name);
  }
  return names;
}

}  // namespace desk::doctor
