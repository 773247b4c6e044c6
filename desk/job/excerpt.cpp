#include "desk/job/source_text.h"

#include <algorithm>
#include <deque>

#include "desk/base/terminal.h"
#include "desk/base/text.h"

namespace desk::job {

namespace {

/// The character at `at`, fit for a line of its own.
std::string shown(std::string_view line, std::size_t at, std::size_t bytes) {
  const std::string character(line.substr(at, bytes));
  return character == "\t" ? " " : escapeControls(character);
}

std::size_t bytesAt(std::string_view line, std::size_t at) {
  return std::max<std::size_t>(utf8CharacterSize(line, at), 1);
}

/// Bytes of the word at the start of `line`: a text with its quotation marks, a reference, or a run
/// of what numbers and names are made of with the mark of a tag before it; at least one character.
std::size_t wordBytes(std::string_view line) {
  constexpr std::string_view kName =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.:+-";
  if (line.empty()) return 0;
  if (line[0] == '"') {
    std::size_t end = 1;
    while (end < line.size() && line[end] != '"') end += line[end] == '\\' ? 2 : 1;
    return std::min(end + 1, line.size());
  }
  const bool isMarked = line[0] == '<' || line[0] == '&';
  std::size_t start = isMarked ? 1 : 0;
  if (isMarked) start += line.substr(1, 1) == "/" || line.substr(1, 1) == "#" ? 1 : 0;
  const std::size_t end = std::min(line.find_first_not_of(kName, start), line.size());
  const bool isClosed = isMarked && end < line.size() && (line[end] == ';' || line[end] == '>');
  return std::max(isClosed ? end + 1 : end, bytesAt(line, 0));
}

}  // namespace

Excerpt excerptOf(const SourceText& source, const Position& place, std::size_t columns) {
  // What stands further in front could be shown only if the rest took no room.
  const int first = std::max(1, place.column - static_cast<int>(columns));
  std::string_view line = source.line(place.line, first);
  const std::size_t indent = std::min(line.find_first_not_of(" \t"), line.size());
  if (place.column == 0 && indent > columns / 2) line.remove_prefix(indent);
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
  excerpt.start = displayWidth(excerpt.text);
  // No character takes more bytes, so that no longer word could be seen whole.
  const std::size_t end = at + wordBytes(line.substr(std::min(at, line.size()), 4 * columns));
  excerpt.width = 0;
  for (std::size_t used = excerpt.start; at < line.size() && used <= columns;) {
    const std::string character = shown(line, at, bytesAt(line, at));
    if (at < end) excerpt.width += displayWidth(character);
    at += bytesAt(line, at);
    used += displayWidth(character);
    excerpt.text += character;
  }
  excerpt.text = truncatedToColumns(excerpt.text, columns);
  const std::size_t room = columns - std::min(columns, excerpt.start);
  excerpt.width = std::clamp<std::size_t>(excerpt.width, 1, std::max<std::size_t>(room, 1));
  return excerpt;
}

std::string partOf(const SourceText& source, const Position& from, int until) {
  constexpr int kMost = 4000;
  const std::string_view line = source.line(from.line, from.column);
  const int last = std::clamp(until, from.column, from.column + kMost);
  const std::string_view rest = source.line(from.line, last);
  const std::size_t end = line.size() - rest.size() + wordBytes(rest.substr(0, kMost));
  std::string part = from.column > 1 ? "…" : "";
  for (std::size_t at = 0; at < end; at += bytesAt(line, at)) {
    part += shown(line, at, bytesAt(line, at));
  }
  return end < line.size() ? part + "…" : part;
}

}  // namespace desk::job
