#include "desk/base/utf8.h"

namespace desk {
namespace {

/// Lead bytes from `first` to `last`, what the second byte may be, and the size they announce.
struct Lead {
  unsigned char first, last;
  unsigned char secondFirst, secondLast;
  std::size_t size;
};

constexpr Lead kLeads[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool follows(std::string_view text, std::size_t at, const Lead& lead) {
  if (text.size() - at < lead.size) return false;
  for (std::size_t i = 1; i < lead.size; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + i]);
    const unsigned char first = i == 1 ? lead.secondFirst : 0x80;
    const unsigned char last = i == 1 ? lead.secondLast : 0xBF;
    if (byte < first || byte > last) return false;
  }
  return true;
}

}  // namespace

std::size_t utf8CharacterSize(std::string_view text, std::size_t at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  for (const Lead& lead : kLeads) {
    if (byte < lead.first || byte > lead.last) continue;
    return follows(text, at, lead) ? lead.size : 0;
  }
  return 0;
}

bool isUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = utf8CharacterSize(text, at);
    if (size == 0) return false;
    at += size;
  }
  return true;
}

}  // namespace desk
