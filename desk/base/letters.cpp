
#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "desk/base/text.h"

namespace desk {

namespace {

/// Capitals whose small letters lie equally far behind them.
struct Capitals {
  std::uint32_t first;
  std::uint32_t last;
  int toSmall;
  bool alternate = false;  ///< every second one from the first on: small letters lie between them
};

constexpr Capitals kCapitals[] = {
    {0x41, 0x5A, 32},        {0xC0, 0xD6, 32},          {0xD8, 0xDE, 32},
    {0x100, 0x12E, 1, true}, {0x132, 0x136, 1, true},   {0x139, 0x147, 1, true},
    {0x14A, 0x176, 1, true}, {0x178, 0x178, -121},      {0x179, 0x17D, 1, true},
    {0x1CD, 0x1DB, 1, true}, {0x1DE, 0x1EE, 1, true},   {0x1F8, 0x21E, 1, true},
    {0x386, 0x386, 38},      {0x388, 0x38A, 37},        {0x38C, 0x38C, 64},
    {0x38E, 0x38F, 63},      {0x391, 0x3A1, 32},        {0x3A3, 0x3AB, 32},
    {0x3C2, 0x3C2, 1},  // the sigma that ends a word, as any sigma
    {0x400, 0x40F, 80},      {0x410, 0x42F, 32},        {0x460, 0x480, 1, true},
    {0x48A, 0x4BE, 1, true}, {0x4C1, 0x4CD, 1, true},   {0x4D0, 0x52E, 1, true},
    {0x531, 0x556, 48},      {0x1E00, 0x1E94, 1, true}, {0x1EA0, 0x1EFE, 1, true},
    {0xFF21, 0xFF3A, 32}};

std::uint32_t smallLetter(std::uint32_t letter) {
  const auto* const found =
      std::find_if(std::begin(kCapitals), std::end(kCapitals),
                   [&](const Capitals& capitals) { return letter <= capitals.last; });
  const bool isCapital = found != std::end(kCapitals) && letter >= found->first &&
                         !(found->alternate && (letter - found->first) % 2 != 0);
  return isCapital ? letter + static_cast<std::uint32_t>(found->toSmall) : letter;
}

}  // namespace

std::string withoutCase(std::string_view text) {
  if (isAscii(text)) return lowerCase(text);
  std::string small;
  small.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = utf8CharacterSize(text, at);
    if (size == 0) {
      small += text[at++];
      continue;
    }
    const char* start = text.data() + at;
    utf8::unchecked::append(smallLetter(utf8::unchecked::next(start)), std::back_inserter(small));
    at += size;
  }
  return small;
}

int comparedByPeople(const std::string& a, const std::string& b) {
  // It ends at a zero byte, behind which texts may differ.
  const int order = strverscmp(a.c_str(), b.c_str());
  return order != 0 ? order : a.compare(b);
}

}  // namespace desk
