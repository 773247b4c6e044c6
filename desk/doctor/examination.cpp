#include "desk/doctor/examination.h"

#include <algorithm>
#include <map>

namespace desk {

namespace {

constexpr std::size_t kLongestList = 6;

class Examination {
 public:
  Examination(const ElfFile& plugin, const Target* target, const Target* host)
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
    missing("entry points", contract().entryPoints, "both are there",
            "the panel will not take it for a plug-in");
    missing("callbacks", contract().callbacks, "all six are there",
            "the panel cannot show its screen part");
    missing("members", contract().mustExport, "the readers and the screen part are there",
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
  void missing(const std::string& subject, const std::vector<std::string>& names,
               const std::string& otherwise, const std::string& consequence);
  void commands();

  const ElfFile& plugin_;
  const Target* target_;
  const Target* host_;
  std::set<std::string> exported_;
  std::set<std::string> imported_;
  std::vector<Remark> remarks_;
};

std::string machineWords(const std::string& architecture) {
  static const std::map<std::string, std::string> kWords = {
      {"x86-64", "64-bit PC (x86-64)"},
      {"arm64", "64-bit ARM (arm64)"},
      {"armhf", "32-bit ARM with hardware floating point (armhf)"},
  };
  const auto known = kWords.find(architecture);
  return known == kWords.end() ? architecture : known->second;
}

void Examination::machine() {
  const std::string words = machineWords(plugin_.architecture);
  std::vector<std::string> problems;
  if (!plugin_.library) problems.push_back("for " + words + ", but no shared library");
  if (target_ == nullptr && contract().floors.count(plugin_.architecture) == 0) {
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
    const bool there = host_ == nullptr ? matches(symbol.readable, contract().imports)
                                        : host_->offers(symbol.name);
    there ? static_cast<void>(++offered) : lacking.push_back(symbol.readable);
  }
  std::vector<std::string> problems;
  if (!lacking.empty()) {
    problems.push_back((host_ == nullptr ? "calls what panels do not offer: "
                                         : "calls what is not in " + host_->paths() + ": ") +
                       listed(lacking));
  }
  for (const std::string& name : contract().mustImport) {
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
    if (!matches(name, contract().exports)) surplus.push_back(name);
  }
  std::vector<std::string> problems;
  if (!surplus.empty()) {
    problems.push_back("offers what may take the place of the panel's own: " + listed(surplus));
  }
  judge("exports", problems, "nothing but what panels look for");
}

void Examination::missing(const std::string& subject, const std::vector<std::string>& names,
                          const std::string& otherwise, const std::string& consequence) {
  std::vector<std::string> problems;
  for (const std::string& name : names) {
    if (exported_.count(name) != 0) continue;
    problems.push_back("no ");
    problems.back().append(name).append(": ").append(consequence);
  }
  judge(subject, problems, otherwise);
}

void Examination::commands() {
  std::vector<std::string> problems;
  std::vector<std::string> unregistered;
  for (const std::string& name : contract().commands) {
    if (plugin_.functionNames.count(name) != 0) continue;
    plugin_.texts.count(name) != 0
        ? unregistered.push_back(name)
        : problems.push_back("no " + name + ": scripts that call it will fail");
  }
  if (plugin_.texts.count(contract().module) == 0) {
    problems.push_back("no module " + contract().module + ": scripts cannot find it");
  }
  if (problems.empty() && !unregistered.empty()) {
    return fine("commands", "all named, but no table registers " + listed(unregistered) +
                                "; try them with cusdesk run");
  }
  judge("commands", problems,
        "all " + std::to_string(contract().commands.size()) + " of " + contract().module +
            " are registered");
}

}  // namespace

std::vector<Remark> examine(const ElfFile& plugin, const Target* target, const Target* host) {
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

}  // namespace desk
