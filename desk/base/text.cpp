#include "desk/base/text.h"

#include <utf8.h>

#include <cstdint>
#include <cstring>
#include <iterator>

namespace desk {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

/// U+0080 to U+009F among them: terminals take them as escape sequences too.
bool isControl(std::uint32_t codePoint) {
  return codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F);
}

/// Overrides and isolates of the writing direction, which turn around what stands behind them, and
/// the separators that end a line.
bool turnsTextAround(std::uint32_t codePoint) {
  return (codePoint >= 0x2028 && codePoint <= 0x202E) ||
         (codePoint >= 0x2066 && codePoint <= 0x2069);
}

void spellOut(std::string& out, char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  const auto value = static_cast<unsigned char>(byte);
  switch (byte) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  out += "\\x";
  out += kDigits[value >> 4];
  out += kDigits[value & 0xF];
}

/// What a first byte says; 0 for one that no character starts with.
std::size_t announcedSize(char first) {
  const auto byte = static_cast<unsigned char>(first);
  if (byte < 0x80) return 1;
  return byte < 0xC0 ? 0 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF8 ? 4 : 0;
}

}  // namespace

std::size_t utf8CharacterSize(std::string_view text, std::size_t at) {
  const std::size_t size = announcedSize(text[at]);
  if (size == 0 || text.size() - at < size) return 0;
  const char* const start = text.data() + at;
  return utf8::find_invalid(start, start + size) == start + size ? size : 0;
}

bool isAscii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t bytes = 0;
  for (; text.size() >= sizeof bytes; text.remove_prefix(sizeof bytes)) {
    std::memcpy(&bytes, text.data(), sizeof bytes);
    if ((bytes & kHighBits) != 0) return false;
  }
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool isUtf8(std::string_view text) {
  return isAscii(text) || utf8::is_valid(text.begin(), text.end());
}

std::string asUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  return valid;
}

std::string escapeControls(std::string_view text, std::string_view kept) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = utf8CharacterSize(text, at);
    const std::string_view character = text.substr(at, std::max<std::size_t>(size, 1));
    const char* start = character.data();
    const std::uint32_t codePoint = size == 0 ? 0 : utf8::unchecked::next(start);
    const bool isKept = kept.find(character) != std::string_view::npos;
    if (isKept || (size != 0 && !isControl(codePoint) && !turnsTextAround(codePoint))) {
      out += character;
    } else {
      for (const char byte : character) spellOut(out, byte);
    }
    at += character.size();
  }
  return out;
}

std::string quoted(const std::string& value) {
  constexpr std::size_t kLongestBytes = 60;
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

std::string xmlText(std::string_view text) {
  const std::string valid = asUtf8(text);
  std::string clean;
  for (auto at = valid.cbegin(); at != valid.cend();) {
    std::uint32_t codePoint = utf8::unchecked::next(at);
    if (isControl(codePoint)) codePoint = ' ';
    const bool hasNoPlace = codePoint == 0xFFFE || codePoint == 0xFFFF;
    if (hasNoPlace || turnsTextAround(codePoint)) codePoint = kReplacement;
    utf8::unchecked::append(codePoint, std::back_inserter(clean));
  }
  return clean;
}

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string joined(const std::vector<std::string>& texts, std::string_view between) {
  std::string all;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) all += between;
    all += texts[i];
  }
  return all;
}

std::string wrapped(const std::string& text, std::size_t columns, std::size_t indent) {
  std::string lines;
  std::size_t start = 0;
  std::size_t room = columns;
  while (text.size() - start > room) {
    std::size_t blank = text.rfind(' ', start + room);
    if (blank == std::string::npos || blank <= start) blank = text.find(' ', start);
    if (blank == std::string::npos) break;
    lines += text.substr(start, blank - start) + "\n" + std::string(indent, ' ');
    start = blank + 1;
    room = columns - indent;
  }
  return lines + text.substr(start) + "\n";
}

std::string joinedFirst(const std::vector<std::string>& texts, std::size_t most) {
  if (texts.size() <= most) return joined(texts, ", ");
  const auto end = texts.begin() + static_cast<std::ptrdiff_t>(most);
  return joined({texts.begin(), end}, ", ") + " and " + std::to_string(texts.size() - most) +
         " more";
}

std::string countText(std::size_t count, const std::string& word) {
  return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

}  // namespace desk
