// Lengths and angles as a job writes them.
#pragma once

#include <string>

#include "model/key_table.h"

namespace desk::job {

/// A text that ought to be a number, as the standard conversions take it.
struct Measure {
  enum class Form {
    Plain,
    Missing,       ///< there is no text
    NoNumber,      ///< nor one in range
    Trailing,      ///< something else follows the number
    DecimalComma,  ///< a comma and digits follow it: "65,5" is 65
    Points,        ///< a point and digits follow it: "1.200.000" is 1.2
  };

  Form form = Form::Missing;
  double value = 0.0;  ///< of the number at its start; 0 for none

  bool isNumber() const { return form != Form::Missing && form != Form::NoNumber; }
  /// Whether it is a number that a value of this form can be, and not beyond every machine.
  bool isA(model::TextForm wanted) const {
    return isNumber() && model::rangeOf(wanted).holds(value) && value <= kLongest;
  }

  static constexpr double kLongest = 1e6;  ///< mm; keeps sums finite
};

Measure measureOf(const std::string& text);

/// A length or size that reads the same everywhere: nothing but a decimal number above 0, and not
/// beyond every machine. 0 for all else, as "900mm", "1200,5" and "0x10".
double plainSizeOf(const std::string& text);

/// Whether a length is likely meant a thousand times as long: "1.200" for 1200, which is at most
/// `longest` mm. What is 100 mm or more as it stands is not, as in "900.000".
bool looksLikeThousands(const std::string& text, double longest);

}  // namespace desk::job
