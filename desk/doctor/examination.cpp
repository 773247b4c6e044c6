#include "desk/doctor/examination.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "desk/doctor/contract.h"
#include "desk/doctor/contract_names.h"
#include "desk/doctor/remarks.h"
#include "module/script_functions.h"

namespace desk::doctor {

namespace {

class Examination {
 public:
  explicit Examination(const ElfFile& plugin) : plugin_(plugin) {
    for (const DynamicSymbol& symbol : plugin.symbols) {
      if (symbol.defined) exported_.insert(symbol.readable);
    }
  }

  std::vector<Remark> run(const Surroundings& around) {
    add({{Weight::Fine, "machine", machineWords(plugin_)}});
    if (!plugin_.note.version.empty()) add({{Weight::Fine, "version", plugin_.note.version}});
    if (around.target == nullptr) processor();
    add(examineRuntime(plugin_, around.target));
    loading();
    add(examineHost(plugin_, around.host));
    surplusExports();
    missing("entry points", Weight::Fatal, contract::kEntryPoints, "both are there",
            "the panel will not take it for a plug-in");
    missing("callbacks", Weight::Flaw, contract::kCallbacks, "all six are there",
            "the panel cannot show its screen part");
    missing("members", Weight::Flaw, contract::kMustExport,
            "the readers and the screen part are there",
            "hosts that look them up will not find them");
    commands();
    if (around.earlier != nullptr) add(compare(plugin_, *around.earlier));
    return std::move(remarks_);
  }

 private:
  void add(std::vector<Remark> remarks) {
    std::move(remarks.begin(), remarks.end(), std::back_inserter(remarks_));
  }
  void judge(const std::string& subject, const std::vector<std::string>& problems,
             const std::string& otherwise) {
    add(judged(subject, Weight::Flaw, problems, otherwise));
  }

  void processor();
  void loading();
  void surplusExports();
  void missing(const std::string& subject, Weight weight, const Names& names,
               const std::string& otherwise, const std::string& consequence);
  void commands();

  const ElfFile& plugin_;
  std::set<std::string> exported_;
  std::vector<Remark> remarks_;
};

void Examination::processor() {
  const std::string more = plugin_.processor.beyondOldest();
  if (more.empty()) return;
  add({{Weight::Flaw, "processor",
        "compiled for " + more + ", which the oldest controllers lack"}});
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

void Examination::missing(const std::string& subject, Weight weight, const Names& names,
                          const std::string& otherwise, const std::string& consequence) {
  std::vector<std::string> lacking;
  for (const std::string name : names) {
    if (exported_.count(name) == 0) lacking.push_back(name);
  }
  add({lacking.empty() ? Remark{Weight::Fine, subject, otherwise}
                       : Remark{weight, subject, "lacks " + listed(lacking) + ": " + consequence}});
}

void Examination::commands() {
  std::vector<std::string> lacking;
  for (const std::string& text : soughtTexts()) {
    if (plugin_.texts.count(text) == 0) lacking.push_back(text);
  }
  const std::string module = contract::kModule;
  add({lacking.empty() ? Remark{Weight::Fine, "commands",
                                "all " + std::to_string(std::size(script_functions::kWords.rows)) +
                                    " of " + module + " are named"}
                       : Remark{Weight::Flaw, "commands",
                                "names no " + listed(lacking) + ": scripts will not find them"}});
}

bool isKnown(const std::string& architecture) {
  return std::any_of(
      std::begin(contract::kFloors), std::end(contract::kFloors),
      [&](const contract::Floor& floor) { return architecture == floor.architecture; });
}

bool offersAnyOf(const ElfFile& file, const Names& names) {
  return std::any_of(file.symbols.begin(), file.symbols.end(), [&](const DynamicSymbol& symbol) {
    return symbol.defined && isAmong(symbol.readable, names);
  });
}

/// Why nothing else is worth looking at; empty: go on.
std::string settledAtOnce(const ElfFile& plugin, const Surroundings& around) {
  if (plugin.kind == FileKind::Program) return "is a program, not a plug-in";
  if (plugin.kind == FileKind::ObjectFile) {
    return "is an object file (or a kernel module), not a plug-in";
  }
  if (plugin.kind == FileKind::CoreDump) return "is a core dump, not a plug-in";
  if (plugin.kind == FileKind::Unknown) return "is damaged: its type is none that ELF files have";
  if (!offersAnyOf(plugin, contract::kEntryPoints) && !offersAnyOf(plugin, contract::kCallbacks)) {
    return "is not a plug-in for panels: it has neither their entry points nor their callbacks";
  }
  for (const Sysroot* place : {around.host, around.target}) {
    if (place == nullptr) continue;
    for (const ElfFile& file : place->files()) {
      if (file.architecture == plugin.architecture) continue;
      return "will not load: it is for " + machineWords(plugin) + ", but " + file.path +
             " is for " + machineWords(file);
    }
  }
  if (around.target == nullptr && !isKnown(plugin.architecture)) {
    return "is for " + machineWords(plugin) + ", of which no controllers are known";
  }
  return "";
}

std::string sentenceFor(const std::vector<Remark>& remarks, std::ptrdiff_t problems,
                        const Surroundings& around) {
  const auto worst = std::max_element(
      remarks.begin(), remarks.end(),
      [](const Remark& left, const Remark& right) { return left.weight < right.weight; });
  const bool anywhere = around.target == nullptr;
  const std::string host = around.host != nullptr ? " with this host" : "";
  const std::string worstPlace =
      (anywhere ? " on the oldest controllers" : " on this target") + host;
  const std::string place = (anywhere ? " on every known controller" : " on this target") + host;
  if (worst->weight == Weight::Fatal) return "will not work" + worstPlace + ": it " + worst->text;
  if (worst->weight == Weight::Open) return "cannot be judged: it " + worst->text;
  if (problems == 0) return "will load" + place;
  return "will load" + place + ", but has " + std::to_string(problems) +
         (problems == 1 ? " problem" : " problems");
}

}  // namespace

std::vector<std::string> soughtTexts() {
  std::vector<std::string> texts{contract::kModule};
  for (const script_functions::Words& words : script_functions::kWords.rows) {
    texts.emplace_back(words.name);
  }
  return texts;
}

Diagnosis examine(const ElfFile& plugin, const Surroundings& around) {
  const std::string settled = settledAtOnce(plugin, around);
  if (!settled.empty()) return {settled, {}, 1};
  std::vector<Remark> remarks = Examination(plugin).run(around);
  const std::ptrdiff_t problems =
      std::count_if(remarks.begin(), remarks.end(),
                    [](const Remark& remark) { return remark.weight != Weight::Fine; });
  return {sentenceFor(remarks, problems, around), std::move(remarks), static_cast<int>(problems)};
}

}  // namespace desk::doctor
