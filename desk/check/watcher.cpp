#include "desk/check/watcher.h"

#include <algorithm>

#include "desk/base/text.h"
#include "desk/job/rules.h"

namespace desk::check {

void Watcher::start(const Sources& sources, Findings& findings) {
  sources_ = &sources;
  findings_ = &findings;
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
  findings_->push_back({rule, severity, place, message, here_, key, {}});
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
  std::vector<CarriedValue> values;
  Severity severity = Severity::Warning;
  std::string list;
  for (const auto& [value, its] : all) {
    if (value.place.file != first.value.place.file || !(value.element == first.value.element)) {
      continue;
    }
    severity = std::max(severity, its);
    list += (list.empty() ? "" : ", ") + value.key + " " + quoted(value.value) + " (" +
            placeText(value.place) + ")";
    values.push_back(value);
  }
  const std::string source = describe(first.value.element);
  const std::string message = values.size() == 1
                                  ? describe(here_) + " has no \"" + first.value.key +
                                        "\" and keeps " + quoted(first.value.value) + " of " +
                                        source + " (" + placeText(first.value.place) + ")"
                                  : describe(here_) + " lacks " + std::to_string(values.size()) +
                                        " values and keeps those of " + source + ": " + list;
  const std::string key = values.size() == 1 ? first.value.key : "";
  report(rules::kCarriedOver, severity, place, message, key).carried = std::move(values);
}

}  // namespace desk::check
