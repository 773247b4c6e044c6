// Numbers as people write them.
#pragma once

#include <string>

namespace desk {

/// The shortest decimal text that reads back as the same number: "12.1", not "12.100000000000000".
std::string shortestText(double number);

/// The same of the number rounded to hundredths; never "-0".
std::string hundredthsText(double number);

/// The number at the start of a text, as the standard conversions take it.
/// @param whole set to whether nothing but blanks follows the number
/// @return false when there is none, or one out of range
bool numberOf(const std::string& text, double& number, bool& whole);

/// Why the standard conversions refuse a text: "no number" or "out of range".
const char* refusalOf(const std::string& text);

}  // namespace desk
