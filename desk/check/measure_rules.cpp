// The measures of a job, each at the place where it stands in its file.
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "desk/check/job_rules.h"
#include "desk/job/bar_layout.h"

namespace desk::check {

namespace {

/// Makes findings of what is odd about the measures of one job.
class MeasureCheck {
 public:
  MeasureCheck(const LoadedJob& job, Findings& findings) : job_(job), findings_(findings) {
    for (const Finding& finding : findings) {
      if (finding.raises != Raises::Nothing) raised_.insert(keyOf(finding.element, finding.key));
    }
  }

  void run() {
    const DATA_T& job = job_.traced.job;
    add(headerOddities(job, job_.format));
    int number = 0;
    for (const BAR_T& bar : job.Bar) {
      BarPlace place = layOut(bar);
      judge(place, ++number, job_.format);
      add(place.oddities);
    }
  }

 private:
  void add(const Oddities& found) {
    for (const Oddity& oddity : found) {
      const JobValue& value = oddity.value;
      if (isTold(oddity)) continue;
      const std::size_t number = ++told_[oddity.rule];
      if (number > kMostOfRule) continue;
      Finding finding{oddity.rule,
                      oddity.severity,
                      placeOfValue(job_, originOf(value), placeOf(value.element)),
                      describe(value.element) + oddity.text,
                      value.element,
                      value.key};
      if (number == kMostOfRule) finding.message += kMoreOfRule;
      finding.judgedBy.reserve(1 + oddity.others.size());
      finding.judgedBy.emplace_back(value.element, value.key);
      for (const JobValue& other : oddity.others) {
        finding.judgedBy.emplace_back(other.element, other.key);
      }
      findings_.push_back(std::move(finding));
    }
  }

  using ValueKey = std::tuple<int, int, int, std::string>;
  static ValueKey keyOf(const Element& element, const std::string& key) {
    return {element.bar, element.piece, element.work, key};
  }

  /// Whether a value raises and is a finding for that, or is judged by what was never read.
  bool isTold(const Oddity& oddity) const {
    const auto wasNeverRead = [&](const JobValue& value) { return originOf(value) == 0; };
    return wasNeverRead(oddity.value) ||
           std::any_of(oddity.others.begin(), oddity.others.end(), wasNeverRead) ||
           (!raised_.empty() && raised_.count(keyOf(oddity.value.element, oddity.value.key)) != 0);
  }

  const BarTrace& barOf(const Element& element) const {
    return job_.traced.bars[static_cast<std::size_t>(element.bar - 1)];
  }
  const PieceTrace& pieceOf(const Element& element) const {
    return barOf(element).pieces[static_cast<std::size_t>(element.piece - 1)];
  }
  const WorkTrace& workOf(const Element& element) const {
    return pieceOf(element).works[static_cast<std::size_t>(element.work - 1)];
  }

  OriginId originOf(const JobValue& value) const {
    switch (value.level) {
      case Level::Header:
        return job_.traced.header[value.field];
      case Level::Bar:
        return barOf(value.element).keys[value.field];
      case Level::Piece:
        return pieceOf(value.element).keys[value.field];
      case Level::Cut:
        return pieceOf(value.element).cut[value.field];
      case Level::Work:
        break;
    }
    return workOf(value.element).keys[value.field];
  }

  const Place& placeOf(const Element& element) const {
    if (element.bar == 0) return job_.traced.place;
    if (element.piece == 0) return barOf(element).place;
    return element.work == 0 ? pieceOf(element).place : workOf(element).place;
  }

  const LoadedJob& job_;
  std::set<ValueKey> raised_;  ///< what makes a command raise
  Findings& findings_;
  std::map<const char*, std::size_t> told_;  ///< by rule
};

}  // namespace

void checkMeasures(const LoadedJob& job, Findings& findings) {
  MeasureCheck(job, findings).run();
}

}  // namespace desk::check
