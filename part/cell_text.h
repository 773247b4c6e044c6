// Texts of table cells: what of them may stand in a picture, and how much of them fits.
#pragma once

#include <string>

namespace Table {

/// How the texts of one band are set.
struct Font {
  int size;  ///< height of the em square, in pixels
  bool bold;
};

/// `text` as UTF-8 that a picture can hold: control characters and line ends become blanks, bytes
/// that are not UTF-8 and noncharacters become U+FFFD.
std::string cleanText(const std::string& text);

/// `text` when it fits into `width` pixels, else its beginning and an ellipsis, cut between two
/// characters and never before a combining mark; empty when not even the ellipsis fits.
///
/// The panel's fonts are not known here, so the width is estimated the same way everywhere and on
/// the wide side: as the widest of the common sans-serif faces, full-width characters as one em.
/// @param text what `cleanText` returned
std::string fitText(const std::string& text, int width, const Font& font);

/// How wide `text` is by the same estimate, in pixels, rounded up; the largest int at most.
/// @param text what `cleanText` returned
int widthOf(const std::string& text, const Font& font);

}  // namespace Table
