// Inputs that are a list of steps: one line per step, its first byte names it, '|' separates its
// arguments. So kept inputs can be read, and written by hand.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

constexpr std::size_t kMostSteps = 64;

inline std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.emplace_back(text.substr(0, end));
    if (end == text.size()) return parts;
    text.remove_prefix(end + 1);
  }
}

struct Step {
  char name = '\0';
  std::vector<std::string> arguments;

  std::string text(std::size_t at) const { return at < arguments.size() ? arguments[at] : ""; }
  int number(std::size_t at) const {
    return static_cast<int>(std::strtol(text(at).c_str(), nullptr, 10));
  }
};

/// The steps of an input, at most `kMostSteps`. Empty lines are passed over.
inline std::vector<Step> stepsOf(const std::uint8_t* data, std::size_t size) {
  std::vector<Step> steps;
  const std::string_view input(size == 0 ? "" : reinterpret_cast<const char*>(data), size);
  for (const std::string& line : split(input, '\n')) {
    if (line.empty() || steps.size() == kMostSteps) continue;
    steps.push_back({line[0], split(std::string_view(line).substr(1), '|')});
  }
  return steps;
}

}  // namespace fuzzing
