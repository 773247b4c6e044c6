// Text: UTF-8, what may be shown, and small questions.
//
// A job file may hold any bytes. Well-formed UTF-8 is told from the rest in one place: overlong
// forms, surrogates and values past U+10FFFF are not well formed, zero bytes are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// Bytes of the character that starts at `at`, 1 to 4; 0 when no well-formed one does. `at` lies
/// inside `text`.
std::size_t utf8CharacterSize(std::string_view text, std::size_t at);

bool isAscii(std::string_view text);

bool isUtf8(std::string_view text);

/// `text` with one U+FFFD for each sequence that is not well formed.
std::string asUtf8(std::string_view text);

/// `text` with control characters, those that turn the text behind them around, and bytes that are
/// no UTF-8 spelled out, as in "\n" or "\x1b". A backslash stays as it is.
/// @param kept control characters that stay as they are too
std::string escapeControls(std::string_view text, std::string_view kept = {});

/// A value between quotation marks, fit for one line: what cannot be shown is spelled out, what is
/// long is cut.
std::string quoted(const std::string& value);

/// `text` as UTF-8 that an XML document may hold and a line of text can show: control characters
/// become blanks, everything else that has no place there U+FFFD. Escaping is left to the writer.
std::string xmlText(std::string_view text);

bool startsWith(std::string_view text, std::string_view start);
bool endsWith(std::string_view text, std::string_view end);

/// `text` with the capitals of ASCII as small letters.
std::string lowerCase(std::string_view text);

/// Whether there are only spaces, tabs and line ends in it.
bool isBlank(std::string_view text);

/// The texts one behind the other with `between` between them.
std::string joined(const std::vector<std::string>& texts, std::string_view between);

/// The text in lines of up to `columns` bytes, broken at blanks, each with a line end. Lines behind
/// the first start with `indent` blanks.
std::string wrapped(const std::string& text, std::size_t columns = 80, std::size_t indent = 0);

/// The first few of them, with commas, and how many there are beside: "a, b and 3 more".
std::string joinedFirst(const std::vector<std::string>& texts, std::size_t most);

/// "1 piece", "2 pieces"
std::string countText(std::size_t count, const std::string& word);

template <class Texts>
bool contains(const Texts& texts, std::string_view text) {
  return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

/// `text` in UTF-8 with small letters for capitals: of Latin, Greek, Cyrillic, Armenian and of the
/// wide letters of East Asian fonts. Bytes that are no UTF-8 stay.
std::string withoutCase(std::string_view text);

/// Sorts as people do: "P65-9" stands before "P65-11". Below zero where `a` goes before `b`, 0 for
/// equal texts.
int comparedByPeople(const std::string& a, const std::string& b);

}  // namespace desk
