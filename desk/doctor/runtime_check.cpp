#include <algorithm>
#include <charconv>
#include <map>
#include <sstream>

#include "desk/doctor/contract.h"
#include "desk/doctor/contract_names.h"
#include "desk/doctor/remarks.h"

namespace desk::doctor {

namespace {

constexpr char kLibraries[] = "libraries";
constexpr char kVersions[] = "versions";

/// A symbol version such as GLIBC_2.17.
struct Version {
  std::string family;  ///< "GLIBC"
  std::vector<int> number;
};

/// Takes `text` apart; without a number at its end all of it is the family.
Version parseVersion(const std::string& text) {
  const std::size_t split = text.rfind('_');
  if (split == std::string::npos || split + 1 == text.size() ||
      text.find_first_not_of("0123456789.", split + 1) != std::string::npos) {
    return {text, {}};
  }
  Version version{text.substr(0, split), {}};
  std::istringstream parts(text.substr(split + 1));
  for (std::string part; std::getline(parts, part, '.');) {
    std::from_chars(part.data(), part.data() + part.size(), version.number.emplace_back());
  }
  return version;
}

Remark judgeLibrary(const ElfFile& plugin, const std::string& soname, const Sysroot* target) {
  if (target == nullptr) {
    if (isAmong(soname, contract::kRuntime)) return {Weight::Fine, kLibraries, soname};
    return {Weight::Open, kLibraries,
            "needs " + soname + ", which is not of the standard runtime; controllers may lack it"};
  }
  const ElfFile* library = target->library(soname, plugin.architecture);
  if (library == nullptr) {
    return {Weight::Fatal, kLibraries, "needs " + soname + ", which is not in " + target->paths()};
  }
  if (library->architecture != plugin.architecture) {
    return {Weight::Fatal, kLibraries,
            soname + " of the target is for " + library->architecture + ", the plug-in for " +
                plugin.architecture};
  }
  return {Weight::Fine, kLibraries, soname};
}

std::vector<Remark> judgeLibraries(const ElfFile& plugin, const Sysroot* target) {
  std::vector<Remark> remarks;
  std::vector<std::string> fine;
  for (const std::string& soname : plugin.needed) {
    Remark remark = judgeLibrary(plugin, soname, target);
    remark.weight != Weight::Fine ? remarks.push_back(std::move(remark)) : fine.push_back(soname);
  }
  if (remarks.empty()) {
    const std::string where = target == nullptr ? "the standard runtime" : "all in the target";
    remarks.push_back(
        {Weight::Fine, kLibraries, fine.empty() ? "needs none" : listed(fine) + ": " + where});
  }
  return remarks;
}

/// The target's library of that name, if it is one that the plug-in can use.
const ElfFile* usableLibrary(const std::string& soname, const ElfFile& plugin,
                             const Sysroot& target) {
  const ElfFile* library = target.library(soname, plugin.architecture);
  return library != nullptr && library->architecture == plugin.architecture ? library : nullptr;
}

/// The newest version of a family among `versions`; empty when it has none.
std::string newest(const std::string& family, const std::set<std::string>& versions) {
  std::string best;
  for (const std::string& text : versions) {
    const Version version = parseVersion(text);
    if (version.family == family && (best.empty() || version.number > parseVersion(best).number)) {
      best = text;
    }
  }
  return best;
}

/// What is wrong with a version, as the end of a sentence; empty when nothing is.
std::string faultOf(const DynamicSymbol& symbol, const ElfFile& plugin, const Sysroot* target) {
  const Version version = parseVersion(symbol.version);
  if (target != nullptr) {
    const ElfFile* library = usableLibrary(symbol.library, plugin, *target);
    if (library == nullptr || library->offeredVersions.count(symbol.version) != 0) return "";
    const std::string best = newest(version.family, library->offeredVersions);
    return best.empty() ? "the target's has no such versions" : "the target's has up to " + best;
  }
  bool isKnown = false;
  const contract::Floor* floor = nullptr;
  for (const contract::Floor& candidate : contract::kFloors) {
    if (plugin.architecture != candidate.architecture) continue;
    isKnown = true;
    if (version.family == candidate.family) floor = &candidate;
  }
  if (!isKnown) return "";
  if (floor == nullptr) return "it is not known which controllers have that";
  const std::string oldest = version.family + "_" + floor->number;
  return version.number.empty() || version.number > parseVersion(oldest).number
             ? "the oldest controllers have up to " + oldest
             : "";
}

/// Whether the target's library lacks a symbol although it has the version.
bool isMissing(const DynamicSymbol& symbol, const ElfFile& plugin, const Sysroot* target) {
  if (target == nullptr || symbol.weak) return false;
  const ElfFile* library = usableLibrary(symbol.library, plugin, *target);
  if (library == nullptr) return false;
  const auto& offered = library->symbols;
  return std::none_of(offered.begin(), offered.end(), [&](const DynamicSymbol& other) {
    return other.defined && other.name == symbol.name && other.version == symbol.version;
  });
}

/// What is wrong with the versions that the plug-in asks for: sentence -> the symbols it is due to.
std::map<std::string, std::vector<std::string>> versionFaults(const ElfFile& plugin,
                                                              const Sysroot* target) {
  std::map<std::string, std::vector<std::string>> faults;
  for (const DynamicSymbol& symbol : plugin.symbols) {
    if (symbol.defined || symbol.version.empty()) continue;
    std::string fault = faultOf(symbol, plugin, target);
    if (fault.empty() && isMissing(symbol, plugin, target)) {
      fault = "the target's lacks what is called";
    }
    if (!fault.empty()) {
      faults["needs " + symbol.version + " of " + symbol.library + "; " + fault].push_back(
          symbol.readable);
    }
  }
  return faults;
}

}  // namespace

std::vector<std::string> newestNeeded(const ElfFile& file) {
  std::set<std::string> versions;
  std::set<std::string> families;
  for (const DynamicSymbol& symbol : file.symbols) {
    if (symbol.defined || symbol.version.empty()) continue;
    versions.insert(symbol.version);
    families.insert(parseVersion(symbol.version).family);
  }
  std::vector<std::string> result;
  result.reserve(families.size());
  for (const std::string& family : families) result.push_back(newest(family, versions));
  return result;
}

namespace {

std::vector<Remark> judgeVersions(const ElfFile& plugin, const Sysroot* target) {
  std::vector<Remark> remarks;
  for (const auto& [sentence, causes] : versionFaults(plugin, target)) {
    remarks.push_back(
        {Weight::Fatal, kVersions, sentence + " (because of " + listed(causes) + ")"});
  }
  return remarks;
}

Remark versionsAreFine(const ElfFile& plugin, const Sysroot* target) {
  const std::vector<std::string> needed = newestNeeded(plugin);
  const std::string whose =
      target == nullptr ? "all controllers have these" : "the target has these";
  return {Weight::Fine, kVersions,
          needed.empty() ? "asks for none" : listed(needed) + ": " + whose};
}

}  // namespace

bool isNewer(const std::string& version, const std::string& other) {
  const Version left = parseVersion(version);
  const Version right = parseVersion(other);
  return left.family != right.family || left.number > right.number;
}

std::vector<Remark> examineRuntime(const ElfFile& plugin, const Sysroot* target) {
  std::vector<Remark> remarks = judgeLibraries(plugin, target);
  const bool comparable = remarks.front().weight == Weight::Fine || target == nullptr;
  const std::vector<Remark> versions = judgeVersions(plugin, target);
  remarks.insert(remarks.end(), versions.begin(), versions.end());
  if (versions.empty() && comparable) remarks.push_back(versionsAreFine(plugin, target));
  return remarks;
}

}  // namespace desk::doctor
