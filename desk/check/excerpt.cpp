#include "desk/check/excerpt.h"

#include <algorithm>
#include <deque>

#include "desk/display_width.h"
#include "desk/host/log.h"
#include "desk/host/utf8.h"

namespace desk::check {

namespace {

/// The character at `at`, fit for a line of its own.
std::string shown(std::string_view line, std::size_t at, std::size_t bytes) {
  const std::string character(line.substr(at, bytes));
  return character == "\t" ? " " : deskhost::visible(character);
}

std::size_t bytesAt(std::string_view line, std::size_t at) {
  return std::max<std::size_t>(deskhost::utf8CharacterSize(line, at), 1);
}

}  // namespace

Excerpt excerptOf(std::string_view line, int column, std::size_t columns) {
  // The characters in front of the caret, the last of which are shown: half a line of them.
  std::deque<std::string> before;
  std::size_t width = 0;
  std::size_t at = 0;
  bool isCut = false;
  for (int number = 1; number < column && at < line.size(); ++number) {
    const std::size_t bytes = bytesAt(line, at);
    before.push_back(shown(line, at, bytes));
    width += displayWidth(before.back());
    at += bytes;
    for (; width > columns / 2; isCut = true) {
      width -= displayWidth(before.front());
      before.pop_front();
    }
  }
  Excerpt excerpt;
  if (isCut) excerpt.text = "…";
  for (const std::string& character : before) excerpt.text += character;
  excerpt.caret = displayWidth(excerpt.text);
  for (std::size_t used = excerpt.caret; at < line.size() && used <= columns;) {
    const std::string character = shown(line, at, bytesAt(line, at));
    at += bytesAt(line, at);
    used += displayWidth(character);
    excerpt.text += character;
  }
  excerpt.text = fitted(excerpt.text, columns);
  return excerpt;
}

}  // namespace desk::check
