#include "desk/check/advice.h"

#include <cctype>
#include <string_view>

#include "desk/base/text.h"

namespace desk::check {

using model::JobFormat;

namespace {

/// The text from its first character that is neither a byte order mark nor a blank.
std::string_view startOf(std::string_view text) {
  if (startsWith(text, "\xEF\xBB\xBF")) text.remove_prefix(3);
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return text;
}

bool looksLikeLua(std::string_view text) {
  constexpr std::string_view kWords[] = {"local", "function", "require", "return", "for",
                                         "if",    "while",    "print",   "panel",  "do"};
  if (startsWith(text, "--") || startsWith(text, "#!")) return true;
  std::size_t end = 0;
  while (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) != 0)) ++end;
  return contains(kWords, text.substr(0, end));
}

}  // namespace

std::string utf16Name(const std::string& bytes) {
  const std::string start = bytes.substr(0, 2);
  if (start.size() < 2) return "";
  if (start == "\xFF\xFE" || (start[0] != '\0' && start[1] == '\0')) return "UTF-16LE";
  if (start == "\xFE\xFF" || (start[0] == '\0' && start[1] != '\0')) return "UTF-16BE";
  return "";
}

bool looksLikeGbk(const std::string& bytes) {
  std::size_t common = 0;
  std::size_t rare = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    if (lead < 0x80) continue;
    const unsigned char trail = ++at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
    if (lead == 0x80 || lead == 0xFF || trail < 0x40 || trail == 0x7F || trail == 0xFF)
      return false;
    // Usual characters have two bytes of this range each, which other encodings of one byte for a
    // character have beside each other by chance only.
    ++(lead >= 0xA1 && lead <= 0xF7 && trail >= 0xA1 ? common : rare);
  }
  return common > 3 * rare;
}

std::string likeness(const std::string& bytes, JobFormat format) {
  const std::string_view text = startOf(bytes);
  if (format == JobFormat::Json && startsWith(text, "<")) {
    return "this looks like XML, which only a file whose name ends in .xml is read as";
  }
  if (format == JobFormat::Xml && (startsWith(text, "{") || startsWith(text, "["))) {
    return "this looks like JSON, and a file whose name ends in .xml is read as XML";
  }
  return looksLikeLua(text) ? "this looks like a Lua script, which cusdesk run takes" : "";
}

}  // namespace desk::check
