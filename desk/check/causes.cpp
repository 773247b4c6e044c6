#include "desk/check/causes.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "desk/check/advice.h"
#include "desk/job/rules.h"

namespace desk::check {

namespace {

/// An element and one of its keys; without a key the whole of the element.
using Missing = std::tuple<int, int, int, std::string>;

Missing missing(const Element& element, const std::string& key) {
  return {element.bar, element.piece, element.work, simplified(key)};
}

/// The causes of missing values, as indexes of findings.
class Causes {
 public:
  Causes(const Findings& findings, std::size_t from, model::JobFormat format) {
    for (std::size_t i = from; i < findings.size(); ++i) {
      const Finding& finding = findings[i];
      places_.emplace(placeOf(causeFrom(finding)), i);
      if (finding.rule == rules::kNotAnObject) add(known_, finding.element, "", i);
      if (finding.rule == rules::kMissingKey) {
        for (const std::string& key : finding.lacks) add(missing_, finding.element, key, i);
      }
      if (finding.loses.empty()) continue;
      add(known_, finding.element, finding.loses, i);
      if (simplified(finding.loses) != "cut") continue;
      for (const std::string& key : namesAt(Level::Cut, format)) {
        add(known_, finding.element, key, i);
      }
    }
  }

  /// The first cause of all that a finding tells to be missing; -1 where something has none.
  std::ptrdiff_t of(const Finding& finding) const {
    if (finding.cause.rule != nullptr) {
      const auto found = places_.find(placeOf(finding.cause));
      return found == places_.end() ? -1 : static_cast<std::ptrdiff_t>(found->second);
    }
    std::ptrdiff_t first = -1;
    const auto covers = [&](const std::string& key) {
      auto found = known_.find(missing(finding.element, key));
      if (found == known_.end()) found = known_.find(missing(finding.element, ""));
      if (found == known_.end()) {
        // A missing key is no cause of itself.
        if (finding.rule == rules::kMissingKey) return false;
        found = missing_.find(missing(finding.element, key));
        if (found == missing_.end()) return false;
      }
      if (first < 0) first = found->second;
      return true;
    };
    const bool isWhole = std::all_of(finding.lacks.begin(), finding.lacks.end(), covers) &&
                         std::all_of(finding.carried.begin(), finding.carried.end(),
                                     [&](const CarriedValue& value) { return covers(value.key); });
    return isWhole ? first : -1;
  }

 private:
  using Indexes = std::map<Missing, std::ptrdiff_t>;

  static void add(Indexes& indexes, const Element& element, const std::string& key,
                  std::size_t index) {
    indexes.emplace(missing(element, key), static_cast<std::ptrdiff_t>(index));
  }

  /// A rule, the place and the element of a finding.
  using FindingPlace = std::tuple<std::string_view, int, int, int, int, int>;
  static FindingPlace placeOf(const Cause& cause) {
    const auto& [rule, at, element] = cause;
    return {rule, at.line, at.column, element.bar, element.piece, element.work};
  }

  Indexes known_;    ///< of what tells why a value is missing
  Indexes missing_;  ///< of what tells that it is
  std::map<FindingPlace, std::size_t> places_;
};

}  // namespace

void putUnderCauses(Findings& findings, std::size_t from, model::JobFormat format) {
  const Causes causes(findings, from, format);
  std::vector<bool> isMoved(findings.size(), false);
  for (std::size_t i = from; i < findings.size(); ++i) {
    const std::ptrdiff_t found = causes.of(findings[i]);
    if (found < 0) continue;
    Finding& cause = findings[static_cast<std::size_t>(found)];
    if (cause.isWeighed && cause.severity < findings[i].severity) continue;
    cause.severity = std::max(cause.severity, findings[i].severity);
    cause.consequences.push_back(std::move(findings[i]));
    isMoved[i] = true;
  }
  std::size_t end = from;
  for (std::size_t i = from; i < findings.size(); ++i) {
    if (isMoved[i]) continue;
    if (end != i) findings[end] = std::move(findings[i]);
    ++end;
  }
  findings.erase(findings.begin() + static_cast<std::ptrdiff_t>(end), findings.end());
}

}  // namespace desk::check
