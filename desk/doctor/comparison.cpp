#include <algorithm>

#include "desk/doctor/remarks.h"

namespace desk::doctor {

namespace {

using Texts = std::set<std::string>;

/// What is in `left` and not in `right`.
std::vector<std::string> beyond(const Texts& left, const Texts& right) {
  std::vector<std::string> names;
  std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                      std::back_inserter(names));
  return names;
}

/// Names without a version, as programmers read them: what host and plug-in give each other.
Texts namesOf(const ElfFile& file, bool defined) {
  Texts names;
  for (const DynamicSymbol& symbol : file.symbols) {
    const bool counts = symbol.defined == defined && (defined || !symbol.weak);
    if (counts && symbol.version.empty()) names.insert(symbol.readable);
  }
  return names;
}

Texts needsOf(const ElfFile& file) {
  return {file.needed.begin(), file.needed.end()};
}

/// Versions of the runtime beyond the newest of the same family that `earlier` asks for.
std::vector<std::string> newerVersions(const ElfFile& plugin, const ElfFile& earlier) {
  const std::vector<std::string> known = newestNeeded(earlier);
  std::vector<std::string> newer;
  for (const std::string& version : newestNeeded(plugin)) {
    const bool covered = std::any_of(known.begin(), known.end(), [&](const std::string& other) {
      return !isNewer(version, other);
    });
    if (!covered) newer.push_back(version);
  }
  return newer;
}

Texts classesOf(const ElfFile& file) {
  Texts texts;
  for (const SharedClasses& classes : file.note.libraries) {
    texts.insert(classes.words() + " with " + classes.size + " bytes of " + classes.type);
  }
  return texts;
}

/// What hosts and controllers that suited `earlier` may not be ready for, as clauses about "it".
std::vector<std::string> obstacles(const ElfFile& plugin, const ElfFile& earlier) {
  std::vector<std::string> clauses;
  const auto say = [&](const std::string& clause, const std::vector<std::string>& names) {
    if (!names.empty()) clauses.push_back(clause + listed(names));
  };
  if (machineWords(plugin) != machineWords(earlier)) {
    clauses.push_back("is for " + machineWords(plugin) + ", not for " + machineWords(earlier));
  }
  say("also needs ", beyond(needsOf(plugin), needsOf(earlier)));
  say("asks for newer versions of the runtime: ", newerVersions(plugin, earlier));
  say("also calls ", beyond(namesOf(plugin, false), namesOf(earlier, false)));
  say("no longer offers ", beyond(namesOf(earlier, true), namesOf(plugin, true)));
  if (!earlier.note.libraries.empty()) {
    say("was built for other classes: ", beyond(classesOf(plugin), classesOf(earlier)));
  }
  return clauses;
}

}  // namespace

std::vector<Remark> compare(const ElfFile& plugin, const ElfFile& earlier) {
  constexpr char kCompared[] = "compared";
  const std::string& version = earlier.note.version;
  const std::string other =
      earlier.path + (version.empty() ? " (which does not say its version)" : " (" + version + ")");
  std::vector<std::string> clauses = obstacles(plugin, earlier);
  for (std::string& clause : clauses) clause += ", unlike " + other;
  std::vector<Remark> remarks =
      judged(kCompared, Weight::Flaw, clauses, "asks for no more and offers no less than " + other);
  const std::vector<std::string> added = beyond(namesOf(plugin, true), namesOf(earlier, true));
  if (!added.empty()) remarks.push_back({Weight::Fine, kCompared, "new: " + listed(added)});
  return remarks;
}

}  // namespace desk::doctor
