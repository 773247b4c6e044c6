#include "desk/base/numbers.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace desk {

namespace {

constexpr int kFewestDigits = 15;  ///< every number of so many digits reads back
constexpr int kMostDigits = 17;    ///< enough for all numbers

constexpr double kMostPlain = 1e11;  ///< with three decimals fewer than 15 digits

/// A positive number of at most three decimals, which reads back; empty for others.
std::string decimalText(double number) {
  if (!(number > 0.0 && number < kMostPlain)) return {};
  const auto thousandths = static_cast<std::int64_t>(number * 1000.0 + 0.5);
  if (static_cast<double>(thousandths) / 1000.0 != number) return {};
  std::string text = std::to_string(thousandths / 1000);
  const auto decimals = static_cast<int>(thousandths % 1000);
  if (decimals > 0) text += '.';
  for (int rest = decimals, unit = 100; rest > 0; rest %= unit, unit /= 10) {
    text += static_cast<char>('0' + rest / unit);
  }
  return text;
}

}  // namespace

std::string shortestText(double number) {
  if (std::string plain = decimalText(number); !plain.empty()) return plain;
  char text[32];
  for (int digits = kFewestDigits;; ++digits) {
    std::snprintf(text, sizeof text, "%.*g", digits, number);
    if (digits == kMostDigits || std::strtod(text, nullptr) == number) return text;
  }
}

std::string hundredthsText(double number) {
  const double rounded = std::round(number * 100.0) / 100.0;
  return rounded == 0.0 ? "0" : shortestText(rounded);
}

bool numberOf(const std::string& text, double& number, bool& whole) {
  // Scripts get what stands in front of a zero byte.
  const char* const start = text.c_str();
  char* end = nullptr;
  number = std::strtod(start, &end);
  if (end == start || !std::isfinite(number)) return false;
  whole = end[std::strspn(end, " \t\r\n")] == '\0';
  return true;
}

const char* refusalOf(const std::string& text) {
  char* end = nullptr;
  errno = 0;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && errno == ERANGE ? "out of range" : "no number";
}

}  // namespace desk
