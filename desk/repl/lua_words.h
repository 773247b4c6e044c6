// The words of the language.
#pragma once

#include <string_view>

namespace desk::repl {

inline constexpr std::string_view kReserved[] = {
    "and",      "break",  "do",   "else", "elseif", "end",  "false", "for",
    "function", "goto",   "if",   "in",   "local",  "nil",  "not",   "or",
    "repeat",   "return", "then", "true", "until",  "while"};

/// Whether a character may stand in a name, at its start or later.
inline bool isNameCharacter(char byte, bool first) {
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
  return letter || (!first && byte >= '0' && byte <= '9');
}

/// Whether `text` can be written as a name, without quotes.
inline bool isName(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!isNameCharacter(text[i], i == 0)) return false;
  }
  for (const std::string_view word : kReserved) {
    if (text == word) return false;
  }
  return !text.empty();
}

}  // namespace desk::repl
