#include "desk/job/measure.h"

#include <algorithm>
#include <cctype>

#include "desk/base/numbers.h"

namespace desk::job {

namespace {

bool isDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

/// What stands behind the number at the start of a text, behind which something does stand.
Measure::Form formOfRest(const std::string& text) {
  const std::size_t start = std::min(text.find_first_of("0123456789"), text.size());
  const std::size_t comma = text.find(',', start);
  const auto digitsUpTo = [&](std::size_t end) {
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(start),
                       text.begin() + static_cast<std::ptrdiff_t>(end),
                       [](char byte) { return isDigit(byte) || byte == '.'; });
  };
  if (comma != std::string::npos && comma + 1 < text.size() && isDigit(text[comma + 1]) &&
      digitsUpTo(comma)) {
    return Measure::Form::DecimalComma;
  }
  const std::size_t last = text.rfind('.');
  const bool hasTwo = last != std::string::npos && text.find('.') != last;
  return hasTwo && digitsUpTo(text.size()) ? Measure::Form::Points : Measure::Form::Trailing;
}

}  // namespace

Measure measureOf(const std::string& text) {
  if (text.empty()) return {};
  double value = 0.0;
  bool whole = false;
  if (!numberOf(text, value, whole)) return {Measure::Form::NoNumber, 0.0};
  return {whole ? Measure::Form::Plain : formOfRest(text), value};
}

double plainSizeOf(const std::string& text) {
  const Measure measure = measureOf(text);
  const bool isDecimal = text.find_first_of("xX") == std::string::npos;
  const bool isPlain = measure.form == Measure::Form::Plain && isDecimal;
  return isPlain && measure.isA(model::TextForm::Size) ? measure.value : 0.0;
}

bool looksLikeThousands(const std::string& text, double longest) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos || point == 0 || point > 2 || text.size() != point + 4)
    return false;
  std::string digits = text;
  digits.erase(point, 1);
  if (text[0] == '0' || !std::all_of(digits.begin(), digits.end(), isDigit)) return false;
  return std::stod(digits) <= longest;
}

}  // namespace desk::job
