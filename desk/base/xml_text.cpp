#include "desk/base/xml_text.h"

#include <utf8.h>

#include <cstdint>
#include <iterator>

namespace desk {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

}  // namespace

std::string xmlText(const std::string& text) {
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid), kReplacement);
  std::string clean;
  for (auto at = valid.cbegin(); at != valid.cend();) {
    std::uint32_t codePoint = utf8::unchecked::next(at);
    if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F)) codePoint = ' ';
    if (codePoint == 0xFFFE || codePoint == 0xFFFF) codePoint = kReplacement;
    utf8::unchecked::append(codePoint, std::back_inserter(clean));
  }
  return clean;
}

}  // namespace desk
