#include "desk/base/display_width.h"

#include <utf8.h>
#include <clocale>
#include <cwchar>

#include <algorithm>

#include "desk/base/utf8.h"

namespace desk {

namespace {

/// The C library's table of widths, whatever locale the program runs in.
int widthOf(char32_t character) {
  static const locale_t kUtf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kUtf8 == nullptr) return 1;
  const locale_t before = uselocale(kUtf8);
  const int width = wcwidth(static_cast<wchar_t>(character));
  uselocale(before);
  return width;
}

/// Goes past one character and returns how many columns it fills.
std::size_t take(std::string_view text, std::size_t& at) {
  const std::size_t size = utf8CharacterSize(text, at);
  if (size < 2) {
    const auto byte = static_cast<unsigned char>(text[at++]);
    return byte < 0x20 || byte == 0x7F ? 0 : 1;
  }
  const char* place = text.data() + at;
  at += size;
  return static_cast<std::size_t>(std::max(widthOf(utf8::unchecked::next(place)), 0));
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
  std::size_t columns = 0;
  for (std::size_t at = 0; at < text.size();) columns += take(text, at);
  return columns;
}

std::string fitted(const std::string& text, std::size_t columns) {
  if (displayWidth(text) <= columns) return text;
  if (columns == 0) return "";
  std::size_t end = 0;
  std::size_t used = 0;
  for (std::size_t at = 0; at < text.size(); end = at) {
    used += take(text, at);
    if (used > columns - 1) break;
  }
  return text.substr(0, end) + "…";
}

std::string padded(const std::string& text, std::size_t columns, bool toRight) {
  const std::string blanks(columns - std::min(displayWidth(text), columns), ' ');
  return toRight ? blanks + text : text + blanks;
}

}  // namespace desk
