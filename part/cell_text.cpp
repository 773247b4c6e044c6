#include "part/cell_text.h"

#include <utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

namespace Table {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr char kEllipsis[] = "\u2026";
constexpr int kEllipsisWidth = 100 * 100;
constexpr std::int64_t kBoldPercent = 118;
constexpr std::uint32_t kFirstFullWidth = 0x2E80;  ///< from here on bold is not wider
constexpr int kMarksOnOneCharacter = 3;

/// Advance widths in hundredths of the em square.
struct WidthRange {
  std::uint32_t first;
  std::uint32_t last;
  int width;
};

constexpr int kOtherWidth = 125;
constexpr WidthRange kWidths[] = {
    {0x00A0, 0x00AF, 100},    // Latin-1
    {0x00B0, 0x00B0, 64},     // degree sign; where it is full-width, the right half is blank
    {0x00B1, 0x00FF, 100},    // Latin-1
    {0x0100, 0x02FF, 110},    // more Latin letters
    {0x0300, 0x036F, 0},      // combining marks
    {0x0370, 0x03FF, 100},    // Greek
    {0x0400, 0x042F, 113},    // Cyrillic capitals
    {0x0430, 0x045F, 94},     // Cyrillic
    {0x200B, 0x200F, 0},      // joiners and direction marks
    {0x2010, 0x2027, 100},    // dashes, quotes, ellipsis
    {0x202A, 0x202E, 0},      // directions
    {0x2060, 0x2069, 0},      // joiners, directions
    {0x20D0, 0x20FF, 0},      // combining marks for symbols
    {0x2190, 0x21FF, 100},    // arrows
    {0x2460, 0x259F, 100},    // enclosed numbers, box drawing
    {0x2E80, 0x3098, 100},    // radicals, CJK punctuation, kana
    {0x3099, 0x309A, 0},      // combining kana marks
    {0x309B, 0xA4CF, 100},    // kana, CJK ideographs
    {0xAC00, 0xD7A3, 100},    // Hangul
    {0xF900, 0xFAFF, 100},    // CJK compatibility ideographs
    {0xFDF0, 0xFDFD, 1000},   // Arabic phrases in one character
    {0xFE00, 0xFE0F, 0},      // variation selectors
    {0xFE20, 0xFE2F, 0},      // combining half marks
    {0xFE30, 0xFE6F, 100},    // CJK compatibility forms
    {0xFEFF, 0xFEFF, 0},      // byte order mark
    {0xFF00, 0xFFEF, 100},    // full-width forms
    {0x1F000, 0x1FAFF, 160},  // pictographs
    {0x20000, 0x3FFFF, 100},  // rarer CJK ideographs
};

int asciiWidth(char character) {
  if (std::strchr(" !'(),-./:;I[\\]fijlrt|", character) != nullptr) return 42;
  if (std::strchr("%@MWmw", character) != nullptr) return 102;
  const bool broad = std::strchr("#&+<=>^~", character) != nullptr;
  return broad || (character >= 'A' && character <= 'Z') ? 84 : 64;
}

int advance(std::uint32_t codePoint) {
  if (codePoint < 0x80) return asciiWidth(static_cast<char>(codePoint));
  const auto* range = std::lower_bound(
      std::begin(kWidths), std::end(kWidths), codePoint,
      [](const WidthRange& candidate, std::uint32_t point) { return candidate.last < point; });
  return range != std::end(kWidths) && codePoint >= range->first ? range->width : kOtherWidth;
}

/// Adds up how wide a text is: in hundredths of an em, times the percentage that bold adds.
class Ruler {
 public:
  explicit Ruler(bool bold) : bold_(bold) {}

  std::int64_t add(std::uint32_t codePoint) {
    const int own = advance(codePoint);
    marks_ = own == 0 ? marks_ + 1 : 0;
    // More marks than a script puts on one character would pile up over the neighbouring rows.
    used_ += (marks_ > kMarksOnOneCharacter ? 100 : own) *
             (bold_ && codePoint < kFirstFullWidth ? kBoldPercent : 100);
    return used_;
  }

 private:
  bool bold_;
  int marks_ = 0;
  std::int64_t used_ = 0;
};

std::uint32_t cleanCodePoint(std::uint32_t codePoint) {
  if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F)) return ' ';
  if (codePoint == 0x2028 || codePoint == 0x2029) return ' ';  // line and paragraph separator
  return codePoint == 0xFFFE || codePoint == 0xFFFF ? kReplacement : codePoint;
}

}  // namespace

std::string cleanText(const std::string& text) {
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  std::string clean;
  clean.reserve(valid.size());
  for (auto at = valid.cbegin(); at != valid.cend();) {
    utf8::unchecked::append(cleanCodePoint(utf8::unchecked::next(at)), std::back_inserter(clean));
  }
  return clean;
}

std::string fitText(const std::string& text, int width, const Font& font) {
  const std::int64_t room = std::int64_t{width} * 10000 / font.size;
  Ruler ruler(font.bold);
  auto cut = text.cbegin();
  for (auto at = text.cbegin(); at != text.cend();) {
    const std::int64_t used = ruler.add(utf8::unchecked::next(at));
    if (used + kEllipsisWidth <= room) cut = at;
    if (used > room) {
      return kEllipsisWidth > room ? "" : std::string(text.cbegin(), cut) + kEllipsis;
    }
  }
  return text;
}

int widthOf(const std::string& text, const Font& font) {
  Ruler ruler(font.bold);
  std::int64_t used = 0;
  for (auto at = text.cbegin(); at != text.cend();) used = ruler.add(utf8::unchecked::next(at));
  const std::int64_t width = (used * font.size + 9999) / 10000;
  return static_cast<int>(std::min<std::int64_t>(width, std::numeric_limits<int>::max()));
}

}  // namespace Table
