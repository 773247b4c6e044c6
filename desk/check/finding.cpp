#include "desk/check/finding.h"

#include <algorithm>

#include "desk/base/text.h"

namespace desk::check {

namespace {

constexpr std::size_t kLongestBytes = 60;

}  // namespace

bool makesRaise(const Finding& finding, Raises what) {
  const auto& all = finding.consequences;
  return finding.raises == what || std::any_of(all.begin(), all.end(), [&](const Finding& one) {
           return makesRaise(one, what);
         });
}

std::string quoted(const std::string& value) {
  std::string text = escapeControls(value);
  if (text.size() > kLongestBytes) {
    std::size_t end = 0;
    for (std::size_t next = 0; next <= kLongestBytes;) {
      end = next;
      next += utf8CharacterSize(text, next);
    }
    text = text.substr(0, end) + "…";
  }
  return "\"" + text + "\"";
}

}  // namespace desk::check
