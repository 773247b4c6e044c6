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
  const auto thousandths = std::llround(number * 1000.0);
  if (static_cast<double>(thousandths) / 1000.0 != number) return {};
  std::string text = std::to_string(thousandths / 1000);
  const auto decimals = static_cast<int>(thousandths % 1000);
  if (decimals > 0) text += '.';
  for (int rest = decimals, unit = 100; rest > 0; rest %= unit, unit /= 10) {
    text += static_cast<char>('0' + rest / unit);
  }
  return text;
}

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Reads digits with at most one point among them and nothing else, as strtod does: so few digits
/// and their power of ten are exact, and so is the rounding of their quotient.
bool readPlain(const std::string& text, double& number) {
  if (text.empty() || text.size() > kFewestDigits) return false;
  std::int64_t digits = 0;
  std::size_t point = text.size();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '.' && point == text.size() && i > 0) {
      point = i + 1;
    } else if (text[i] >= '0' && text[i] <= '9') {
      digits = digits * 10 + (text[i] - '0');
    } else {
      return false;
    }
  }
  number = static_cast<double>(digits) / kPowersOfTen[text.size() - point];
  return true;
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
  if (readPlain(text, number)) return whole = true;
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
