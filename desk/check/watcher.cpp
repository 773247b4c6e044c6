#include "desk/check/watcher.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "desk/base/text.h"
#include "desk/job/rules.h"

namespace desk::check {

void Watcher::start(const Sources& sources, Findings& findings) {
  sources_ = &sources;
  findings_ = &findings;
  told_.clear();
  missing_.clear();
}

void Watcher::enter(Level level) {
  switch (level) {
    case Level::Header:
      traced_.bars.clear();
      here_ = {};
      break;
    case Level::Bar:
      here_ = {here_.bar + 1, 0, 0};
      break;
    case Level::Piece:
      here_ = {here_.bar, here_.piece + 1, 0};
      break;
    case Level::Work:
      ++here_.work;
      break;
    case Level::Cut:
      break;
  }
}

void Watcher::keepTrace(Level level, const Place& place) {
  switch (level) {
    case Level::Header:
      traced_.header = trace<DATA_T>();
      break;
    case Level::Bar:
      traced_.bars.push_back({trace<BAR_T>(), place, {}});
      break;
    case Level::Piece:
      traced_.bars.back().pieces.push_back(
          {trace<PIECE_CHILD_SECOND_T>(), trace<CUT_T>(), trace<FIELD_T>(), place, {}});
      break;
    case Level::Work:
      traced_.bars.back().pieces.back().works.push_back({trace<WORK_T>(), place});
      break;
    case Level::Cut:
      break;
  }
}

Finding& Watcher::report(const char* rule, Severity severity, const Place& place,
                         const std::string& message, const std::string& key) {
  return report(found(rule, severity, place, message, key));
}

Finding& Watcher::report(Finding finding) {
  const std::size_t number = ++told_[finding.rule];
  if (number > kMostOfRule) return dropped_ = std::move(finding);
  if (number == kMostOfRule) finding.message += kMoreOfRule;
  findings_->push_back(std::move(finding));
  return findings_->back();
}

std::string Watcher::placeText(const Place& place) const {
  const std::string line = std::to_string(place.at.line);
  if (place.file == file()) return "line " + line;
  return escapeControls((*sources_)[static_cast<std::size_t>(place.file)]->name()) + ":" + line;
}

void Watcher::reportStayed(const std::vector<Stayed>& stayed, const Place& place) {
  for (std::size_t i = 0; i < stayed.size(); ++i) {
    const auto sameElement = [&](const Stayed& other) {
      return other.value.place.file == stayed[i].value.place.file &&
             other.value.element == stayed[i].value.element;
    };
    const auto first = std::find_if(stayed.begin(), stayed.end(), sameElement);
    if (&*first == &stayed[i]) reportStayedOf(stayed, *first, place);
  }
}

void Watcher::reportStayedOf(const std::vector<Stayed>& all, const Stayed& first,
                             const Place& place) {
  std::vector<Stayed> stayed;
  std::copy_if(all.begin(), all.end(), std::back_inserter(stayed), [&](const Stayed& other) {
    return other.value.place.file == first.value.place.file &&
           other.value.element == first.value.element;
  });
  const std::string source = describe(first.value.element) + " (" + linesText(stayed) + ")";
  const bool isOne = stayed.size() == 1;
  const std::string message =
      isOne ? describe(here_) + " has no \"" + first.value.key + "\" and keeps " +
                  quoted(first.value.value) + " of " + source
            : describe(here_) + " lacks " + std::to_string(stayed.size()) +
                  " values and keeps those of " + source + ": " + gravest(stayed);
  Severity severity = Severity::Warning;
  std::vector<CarriedValue> values;
  for (Stayed& one : stayed) {
    severity = std::max(severity, one.severity);
    values.push_back(std::move(one.value));
  }
  report(rules::kCarriedOver, severity, place, message, isOne ? values.front().key : "").carried =
      std::move(values);
}

std::string Watcher::linesText(const std::vector<Stayed>& stayed) const {
  const auto isBefore = [](const Stayed& a, const Stayed& b) {
    return a.value.place.at.line < b.value.place.at.line;
  };
  const auto [first, last] = std::minmax_element(stayed.begin(), stayed.end(), isBefore);
  const int end = last->value.place.at.line;
  std::string text = placeText(first->value.place);
  if (end == first->value.place.at.line) return text;
  if (first->value.place.file == file()) text.insert(4, "s");
  return text + "-" + std::to_string(end);
}

std::string Watcher::gravest(std::vector<Stayed> stayed) {
  constexpr std::size_t kMost = 4;
  std::stable_partition(stayed.begin(), stayed.end(),
                        [](const Stayed& one) { return one.severity == Severity::Error; });
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < std::min(kMost, stayed.size()); ++i) {
    texts.push_back(stayed[i].value.key + " " + quoted(stayed[i].value.value));
  }
  const std::size_t more = stayed.size() - texts.size();
  return joined(texts, ", ") + (more == 0 ? "" : " and " + std::to_string(more) + " more");
}

}  // namespace desk::check
