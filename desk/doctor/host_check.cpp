#include <algorithm>
#include <iterator>

#include "desk/doctor/contract.h"
#include "desk/doctor/contract_names.h"
#include "desk/doctor/remarks.h"

namespace desk::doctor {

namespace {

constexpr char kImportsSubject[] = "imports";
constexpr char kBuiltFor[] = "built for";

/// Names that the plug-in leaves open to the host.
std::vector<const DynamicSymbol*> leftOpen(const ElfFile& plugin) {
  std::vector<const DynamicSymbol*> names;
  for (const DynamicSymbol& symbol : plugin.symbols) {
    if (!symbol.defined && !symbol.weak && symbol.version.empty()) names.push_back(&symbol);
  }
  return names;
}

Remark lackingNames(const std::vector<std::string>& lacking, const Sysroot* host) {
  if (host == nullptr) {
    return {Weight::Fatal, kImportsSubject, "calls what panels do not offer: " + listed(lacking)};
  }
  const std::vector<std::string> libraries = host->missingLibraries();
  if (libraries.empty()) {
    return {Weight::Fatal, kImportsSubject,
            "calls what is not in " + host->paths() + ": " + listed(lacking)};
  }
  return {Weight::Open, kImportsSubject,
          "calls " + std::to_string(lacking.size()) + " functions that may be in libraries which " +
              host->paths() + " needs and which were not found (--against names their folders): " +
              listed(libraries)};
}

std::vector<Remark> examineImports(const ElfFile& plugin, const Sysroot* host) {
  const std::vector<const DynamicSymbol*> open = leftOpen(plugin);
  std::vector<std::string> lacking;
  for (const DynamicSymbol* symbol : open) {
    const bool there = host == nullptr ? isAmong(symbol->readable, contract::kImports)
                                       : host->offers(symbol->name);
    if (!there) lacking.push_back(symbol->readable);
  }
  if (!lacking.empty()) return {lackingNames(lacking, host)};
  return {{Weight::Fine, kImportsSubject,
           open.empty()
               ? "calls nothing of the panel"
               : std::to_string(open.size()) + " functions of the panel, all of them offered"}};
}

/// Without these no script module can be registered.
std::vector<Remark> examineRegistration(const ElfFile& plugin) {
  std::vector<std::string> unused;
  for (const std::string name : contract::kMustImport) {
    const auto& symbols = plugin.symbols;
    const bool called = std::any_of(
        symbols.begin(), symbols.end(),
        [&](const DynamicSymbol& symbol) { return !symbol.defined && symbol.name == name; });
    if (!called) unused.push_back(name);
  }
  if (unused.empty()) return {};
  return {{Weight::Flaw, kImportsSubject,
           "never calls " + listed(unused) + ", as registering the script functions would"}};
}

/// What is to be said of one library of the host; `loaded` are the names of all of them.
Remark judgeClasses(const SharedClasses& classes, const std::set<std::string>& loaded) {
  const std::string built =
      classes.words() + " (" + classes.type + " has " + classes.size + " bytes)";
  const std::string stem = "lib" + classes.name + ".so";
  const auto ofHost = std::find_if(loaded.begin(), loaded.end(), [&](const std::string& name) {
    return name.compare(0, stem.size(), stem) == 0;
  });
  if (ofHost == loaded.end()) {
    return {Weight::Fine, kBuiltFor, built + "; the host's version cannot be read from its files"};
  }
  if (*ofHost == classes.library) {
    return {Weight::Fine, kBuiltFor, built + "; the host has " + *ofHost + " as well"};
  }
  if (classes.library.empty()) {
    return {Weight::Fine, kBuiltFor, built + "; the host has " + *ofHost};
  }
  return {Weight::Open, kBuiltFor,
          "was built for " + built + ", " + classes.library + ", but the host has " + *ofHost +
              ": unless their classes have the same layout, memory is corrupted"};
}

std::vector<Remark> examineClasses(const ElfFile& plugin, const Sysroot* host) {
  std::vector<Remark> remarks;
  const std::set<std::string> loaded =
      host == nullptr ? std::set<std::string>() : host->neededLibraries();
  for (const SharedClasses& classes : plugin.note.libraries) {
    remarks.push_back(host != nullptr ? judgeClasses(classes, loaded)
                                      : Remark{Weight::Fine, kBuiltFor,
                                               classes.words() + ", whose " + classes.type +
                                                   " has " + classes.size + " bytes"});
  }
  return remarks;
}

}  // namespace

std::vector<Remark> examineHost(const ElfFile& plugin, const Sysroot* host) {
  std::vector<Remark> remarks = examineImports(plugin, host);
  for (Remark& remark : examineRegistration(plugin)) remarks.push_back(std::move(remark));
  for (Remark& remark : examineClasses(plugin, host)) remarks.push_back(std::move(remark));
  return remarks;
}

}  // namespace desk::doctor
