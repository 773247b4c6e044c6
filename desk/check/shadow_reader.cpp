#include "desk/check/shadow_reader.h"

#include <algorithm>

#include "desk/check/rules.h"
#include "desk/host/log.h"

namespace desk::check {

void ShadowReader::start(const Sources& sources, Findings& findings) {
  sources_ = &sources;
  findings_ = &findings;
}

Finding& ShadowReader::report(const char* rule, Severity severity, const Place& place,
                              const std::string& message, const Element& element,
                              const std::string& key) {
  findings_->push_back({rule, severity, place, message, element, key, {}});
  return findings_->back();
}

std::string ShadowReader::placeText(const Place& place) const {
  const std::string line = std::to_string(place.at.line);
  if (place.file == file()) return "line " + line;
  return deskhost::visible((*sources_)[static_cast<std::size_t>(place.file)]->name()) + ":" + line;
}

void ShadowReader::reportStayed(const std::vector<Stayed>& stayed, const Element& here,
                                const Place& place) {
  for (std::size_t i = 0; i < stayed.size(); ++i) {
    const auto sameElement = [&](const Stayed& other) {
      return other.value.place.file == stayed[i].value.place.file &&
             other.value.element == stayed[i].value.element;
    };
    const auto first = std::find_if(stayed.begin(), stayed.end(), sameElement);
    if (&*first == &stayed[i]) reportStayedOf(stayed, *first, here, place);
  }
}

void ShadowReader::reportStayedOf(const std::vector<Stayed>& all, const Stayed& first,
                                  const Element& here, const Place& place) {
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
                                  ? describe(here) + " has no \"" + first.value.key +
                                        "\" and keeps " + quoted(first.value.value) + " of " +
                                        source + " (" + placeText(first.value.place) + ")"
                                  : describe(here) + " lacks " + std::to_string(values.size()) +
                                        " values and keeps those of " + source + ": " + list;
  const std::string key = values.size() == 1 ? first.value.key : "";
  report(rules::kCarriedOver, severity, place, message, here, key).carried = std::move(values);
}

}  // namespace desk::check
