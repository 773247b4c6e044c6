#include "desk/check/excerpt.h"

#include <algorithm>
#include <deque>

#include "desk/base/terminal.h"
#include "desk/base/text.h"

namespace desk::check {

namespace {

/// The character at `at`, fit for a line of its own.
std::string shown(std::string_view line, std::size_t at, std::size_t bytes) {
  const std::string character(line.substr(at, bytes));
  return character == "\t" ? " " : escapeControls(character);
}

std::size_t bytesAt(std::string_view line, std::size_t at) {
  return std::max<std::size_t>(utf8CharacterSize(line, at), 1);
}

}  // namespace

Excerpt excerptOf(const SourceText& source, const Position& place, std::size_t columns) {
  // What stands further in front could be shown only if the rest took no room.
  const int first = std::max(1, place.column - static_cast<int>(columns));
  std::string_view line = source.line(place.line, first);
  if (place.column == 0) line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  // The characters in front of the caret, the last of which are shown: half a line of them.
  std::deque<std::string> before;
  std::size_t width = 0;
  std::size_t at = 0;
  bool isCut = first > 1;
  for (int number = first; number < place.column && at < line.size(); ++number) {
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
  excerpt.text = truncatedToColumns(excerpt.text, columns);
  return excerpt;
}

}  // namespace desk::check
