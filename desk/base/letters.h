// Texts as people compare them.
#pragma once

#include <string>
#include <string_view>

namespace desk {

/// `text` in UTF-8 with small letters for capitals: of Latin, Greek, Cyrillic, Armenian and of the
/// wide letters of East Asian fonts. Bytes that are no UTF-8 stay.
std::string withoutCase(std::string_view text);

/// Sorts as people do: "P65-9" stands before "P65-11". Below zero where `a` goes before `b`, 0 for
/// equal texts.
int comparedByPeople(const std::string& a, const std::string& b);

}  // namespace desk
