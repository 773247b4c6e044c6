#include "desk/check/job_rules.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "desk/check/advice.h"
#include "desk/job/oddities.h"
#include "desk/job/rules.h"

namespace desk::check {

namespace {

/// An element and one of its keys; without a key the whole of the element.
using Missing = std::tuple<int, int, int, std::string>;

Missing missing(const Element& element, const std::string& key) {
  return {element.bar, element.piece, element.work, simplified(key)};
}

/// Whether a finding tells that its value is another one than was meant.
bool isMisread(const Finding& finding) {
  const std::string_view rule = finding.rule;
  if (rule == rules::kRepeatedElement) return finding.severity > Severity::Note;
  return rule == rules::kIgnoredText || tellsMisread(rule);
}

/// Which finding comes of which, by indexes.
class Causes {
 public:
  Causes(const Findings& findings, std::size_t from, model::JobFormat format)
      : findings_(findings), roots_(findings.size(), kUnknown) {
    bool wantsPlaces = false;
    for (std::size_t i = from; i < findings.size(); ++i) {
      const Finding& finding = findings[i];
      wantsPlaces = wantsPlaces || finding.cause.rule != nullptr;
      if (finding.rule == rules::kNotAnObject) add(known_, finding.element, "", i);
      if (finding.rule == rules::kMissingKey) {
        for (const std::string& key : finding.lacks) add(missing_, finding.element, key, i);
      }
      if (!finding.key.empty() && isMisread(finding)) {
        add(misread_, finding.element, finding.key, i);
      }
      if (!finding.judgedBy.empty()) hasJudged_ = true;
      if (finding.loses.empty()) continue;
      add(known_, finding.element, finding.loses, i);
      if (simplified(finding.loses) != "cut") continue;
      for (const std::string& key : namesAt(Level::Cut, format)) {
        add(known_, finding.element, key, i);
      }
    }
    if (hasJudged_) addCarried(from);
    if (wantsPlaces) notePlaces(findings, from);
  }

  /// The finding that one comes of in the end; the one itself where it has no cause, or none that
  /// may weigh as much.
  std::size_t rootOf(std::size_t index) {
    if (roots_[index] != kUnknown) return roots_[index];
    roots_[index] = index;
    const std::ptrdiff_t found = of(index);
    if (found < 0) return index;
    const std::size_t root = rootOf(static_cast<std::size_t>(found));
    const Finding& cause = findings_[root];
    const bool isGraver = cause.isWeighed && cause.severity < findings_[index].severity;
    return roots_[index] = isGraver ? index : root;
  }

 private:
  using Indexes = std::map<Missing, std::ptrdiff_t>;
  static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

  void notePlaces(const Findings& findings, std::size_t from) {
    for (std::size_t i = from; i < findings.size(); ++i) {
      places_.emplace(placeOf(causeFrom(findings[i])), i);
    }
  }

  static void add(Indexes& indexes, const Element& element, const std::string& key,
                  std::size_t index) {
    indexes.emplace(missing(element, key), static_cast<std::ptrdiff_t>(index));
  }

  static std::ptrdiff_t at(const Indexes& indexes, const Element& element, const std::string& key) {
    if (indexes.empty()) return -1;
    const auto found = indexes.find(missing(element, key));
    return found == indexes.end() ? -1 : found->second;
  }

  void addCarried(std::size_t from) {
    for (std::size_t i = from; i < findings_.size(); ++i) {
      const Finding& finding = findings_[i];
      for (const CarriedValue& value : finding.carried)
        add(carried_, finding.element, value.key, i);
    }
  }

  /// What tells why a value is missing; -1 for nothing.
  std::ptrdiff_t knownOf(const Element& element, const std::string& key) const {
    const std::ptrdiff_t found = at(known_, element, key);
    return found >= 0 ? found : at(known_, element, "");
  }

  std::ptrdiff_t of(std::size_t index) const {
    const Finding& finding = findings_[index];
    if (finding.cause.rule != nullptr) {
      const auto found = places_.find(placeOf(finding.cause));
      return found == places_.end() ? -1 : static_cast<std::ptrdiff_t>(found->second);
    }
    return finding.judgedBy.empty() ? ofMissing(finding) : ofJudged(finding, index);
  }

  /// The first cause of all that a finding tells to be missing; -1 where something has none.
  std::ptrdiff_t ofMissing(const Finding& finding) const {
    std::ptrdiff_t first = -1;
    const auto covers = [&](const std::string& key) {
      std::ptrdiff_t found = knownOf(finding.element, key);
      // A missing key is no cause of itself.
      if (found < 0 && finding.rule != rules::kMissingKey)
        found = at(missing_, finding.element, key);
      if (first < 0) first = found;
      return found >= 0;
    };
    const bool isWhole = std::all_of(finding.lacks.begin(), finding.lacks.end(), covers) &&
                         std::all_of(finding.carried.begin(), finding.carried.end(),
                                     [&](const CarriedValue& value) { return covers(value.key); });
    return isWhole ? first : -1;
  }

  /// What tells that a value by which a finding is judged is not the one that was meant.
  std::ptrdiff_t ofJudged(const Finding& finding, std::size_t index) const {
    for (const auto& [element, key] : finding.judgedBy) {
      for (const std::ptrdiff_t found :
           {knownOf(element, key), at(misread_, element, key), at(carried_, element, key)}) {
        if (found >= 0 && found != static_cast<std::ptrdiff_t>(index)) return found;
      }
    }
    return -1;
  }

  /// A rule, the place and the element of a finding.
  using FindingPlace = std::tuple<std::string_view, int, int, int, int, int>;
  static FindingPlace placeOf(const Cause& cause) {
    const auto& [rule, at, element] = cause;
    return {rule, at.line, at.column, element.bar, element.piece, element.work};
  }

  const Findings& findings_;
  bool hasJudged_ = false;
  Indexes known_;                   ///< of what tells why a value is missing
  Indexes missing_;                 ///< of what tells that it is
  Indexes carried_;                 ///< of what tells that it is, and that another one stays
  Indexes misread_;                 ///< of what tells that a value is another one than was meant
  std::vector<std::size_t> roots_;  ///< of each finding
  std::map<FindingPlace, std::size_t> places_;
};

}  // namespace

void putUnderCauses(Findings& findings, std::size_t from, model::JobFormat format) {
  Causes causes(findings, from, format);
  std::vector<std::size_t> roots;
  for (std::size_t i = from; i < findings.size(); ++i) roots.push_back(causes.rootOf(i));
  for (std::size_t i = from; i < findings.size(); ++i) {
    const std::size_t root = roots[i - from];
    if (root == i) continue;
    Finding& cause = findings[root];
    cause.severity = std::max(cause.severity, findings[i].severity);
    cause.consequences.push_back(std::move(findings[i]));
  }
  std::size_t end = from;
  for (std::size_t i = from; i < findings.size(); ++i) {
    if (roots[i - from] != i) continue;
    if (end != i) findings[end] = std::move(findings[i]);
    ++end;
  }
  findings.erase(findings.begin() + static_cast<std::ptrdiff_t>(end), findings.end());
}

}  // namespace desk::check
