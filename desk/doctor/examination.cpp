#include "desk/doctor/examination.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "desk/doctor/contract.h"
#include "module/script_functions.h"

namespace desk::doctor {

namespace {

constexpr std::size_t kLongestList = 6;

/// A list of the contract.
class Names {
 public:
  template <std::size_t kSize>
  constexpr Names(const char* const (&names)[kSize]) : begin_(names), end_(names + kSize) {}
  const char* const* begin() const { return begin_; }
  const char* const* end() const { return end_; }

 private:
  const char* const* begin_;
  const char* const* end_;
};

bool isAmong(const std::string& name, const Names& names) {
  return std::any_of(names.begin(), names.end(), [&](std::string_view entry) {
    if (entry.back() != '*') return name == entry;
    entry.remove_suffix(1);
    return name.compare(0, entry.size(), entry) == 0;
  });
}

class Examination {
 public:
  Examination(const ElfFile& plugin, const Sysroot* target, const Sysroot* host)
      : plugin_(plugin), target_(target), host_(host) {
    for (const DynamicSymbol& symbol : plugin.symbols) {
      (symbol.defined ? exported_ : imported_).insert(symbol.readable);
    }
  }

  std::vector<Remark> run() {
    machine();
    for (Remark& remark : examineRuntime(plugin_, target_)) remarks_.push_back(std::move(remark));
    loading();
    imports();
    surplusExports();
    missing("entry points", contract::kEntryPoints, "both are there",
            "the panel will not take it for a plug-in");
    missing("callbacks", contract::kCallbacks, "all six are there",
            "the panel cannot show its screen part");
    missing("members", contract::kMustExport, "the readers and the screen part are there",
            "hosts that look them up will not find them");
    commands();
    return std::move(remarks_);
  }

 private:
  void fine(const std::string& subject, const std::string& text) {
    remarks_.push_back({false, subject, text});
  }
  void problem(const std::string& subject, const std::string& text) {
    remarks_.push_back({true, subject, text});
  }
  /// One remark: a problem for each sentence, or else that all is fine.
  void judge(const std::string& subject, const std::vector<std::string>& problems,
             const std::string& otherwise) {
    for (const std::string& text : problems) problem(subject, text);
    if (problems.empty()) fine(subject, otherwise);
  }

  void machine();
  void loading();
  void imports();
  void surplusExports();
  void missing(const std::string& subject, const Names& names, const std::string& otherwise,
               const std::string& consequence);
  void commands();

  const ElfFile& plugin_;
  const Sysroot* target_;
  const Sysroot* host_;
  std::set<std::string> exported_;
  std::set<std::string> imported_;
  std::vector<Remark> remarks_;
};

std::string machineWords(const std::string& architecture) {
  if (architecture == "x86-64") return "64-bit PC (x86-64)";
  if (architecture == "arm64") return "64-bit ARM (arm64)";
  if (architecture == "armhf") return "32-bit ARM with hardware floating point (armhf)";
  return architecture;
}

bool isKnown(const std::string& architecture) {
  return std::any_of(
      std::begin(contract::kFloors), std::end(contract::kFloors),
      [&](const contract::Floor& floor) { return architecture == floor.architecture; });
}

void Examination::machine() {
  const std::string words = machineWords(plugin_.architecture);
  std::vector<std::string> problems;
  if (!plugin_.library) problems.push_back("for " + words + ", but no shared library");
  if (target_ == nullptr && !isKnown(plugin_.architecture)) {
    problems.push_back("for " + words + ", of which no controllers are known");
  }
  if (host_ != nullptr) {
    for (const ElfFile& file : host_->files()) {
      if (file.architecture != plugin_.architecture) {
        problems.push_back("for " + words + ", but " + file.path + " is for " +
                           machineWords(file.architecture));
      }
    }
  }
  judge("machine", problems, words);
}

void Examination::loading() {
  std::vector<std::string> problems;
  if (plugin_.executableStack) {
    problems.emplace_back("asks for an executable stack, which hardened controllers refuse");
  }
  if (plugin_.textRelocations) {
    problems.emplace_back("has code that the loader must patch, which hardened controllers refuse");
  }
  if (!plugin_.protectedTables) {
    problems.emplace_back("leaves its function tables writable (link with -z relro -z now)");
  }
  if (!plugin_.searchPath.empty()) {
    problems.push_back("looks for libraries in " + plugin_.searchPath +
                       " first, a folder of the machine it was built on");
  }
  if (plugin_.uniqueSymbols) {
    problems.emplace_back("can never be unloaded (compile with -fno-gnu-unique)");
  }
  judge("loading", problems, "nothing that hardened controllers refuse");
}

void Examination::imports() {
  std::vector<std::string> lacking;
  std::size_t offered = 0;
  for (const DynamicSymbol& symbol : plugin_.symbols) {
    if (symbol.defined || symbol.weak || !symbol.version.empty()) continue;
    const bool there = host_ == nullptr ? isAmong(symbol.readable, contract::kImports)
                                        : host_->offers(symbol.name);
    there ? static_cast<void>(++offered) : lacking.push_back(symbol.readable);
  }
  std::vector<std::string> problems;
  if (!lacking.empty()) {
    problems.push_back((host_ == nullptr ? "calls what panels do not offer: "
                                         : "calls what is not in " + host_->paths() + ": ") +
                       listed(lacking));
  }
  for (const std::string name : contract::kMustImport) {
    if (imported_.count(name) == 0) {
      problems.push_back("never calls " + name + ", so it offers nothing to scripts");
    }
  }
  judge("imports", problems,
        std::to_string(offered) + " functions of the panel, all of them offered");
}

void Examination::surplusExports() {
  std::vector<std::string> surplus;
  for (const std::string& name : exported_) {
    const bool known = isAmong(name, contract::kExports) || isAmong(name, contract::kCallbacks) ||
                       isAmong(name, contract::kEntryPoints);
    if (!known) surplus.push_back(name);
  }
  std::vector<std::string> problems;
  if (!surplus.empty()) {
    problems.push_back("offers what may take the place of the panel's own: " + listed(surplus));
  }
  judge("exports", problems, "nothing but what panels look for");
}

void Examination::missing(const std::string& subject, const Names& names,
                          const std::string& otherwise, const std::string& consequence) {
  std::vector<std::string> problems;
  for (const std::string name : names) {
    if (exported_.count(name) != 0) continue;
    problems.push_back("no ");
    problems.back().append(name).append(": ").append(consequence);
  }
  judge(subject, problems, otherwise);
}

void Examination::commands() {
  std::vector<std::string> problems;
  for (const script_functions::Words& words : script_functions::kWords.rows) {
    const std::string name = words.name;
    if (plugin_.texts.count(name) == 0) {
      problems.push_back("no " + name + ": scripts that call it will fail");
    }
  }
  const std::string module = contract::kModule;
  if (plugin_.texts.count(module) == 0) {
    problems.push_back("no module " + module + ": scripts cannot find it");
  }
  judge("commands", problems,
        "all " + std::to_string(std::size(script_functions::kWords.rows)) + " of " + module +
            " are named");
}

}  // namespace

std::vector<std::string> soughtTexts() {
  std::vector<std::string> texts{contract::kModule};
  for (const script_functions::Words& words : script_functions::kWords.rows) {
    texts.emplace_back(words.name);
  }
  return texts;
}

std::vector<Remark> examine(const ElfFile& plugin, const Sysroot* target, const Sysroot* host) {
  return Examination(plugin, target, host).run();
}

std::string listed(const std::vector<std::string>& names) {
  std::string text;
  const std::size_t shown = std::min(names.size(), kLongestList);
  for (std::size_t index = 0; index < shown; ++index) {
    text += (index == 0 ? "" : ", ") + names[index];
  }
  const std::size_t more = names.size() - shown;
  return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

}  // namespace desk::doctor
