#include "desk/base/number_text.h"

#include <cstdio>
#include <cstdlib>

namespace desk {

std::string shortestText(double number) {
  char text[32] = "";
  for (int digits = 15; digits <= 17; ++digits) {
    std::snprintf(text, sizeof text, "%.*g", digits, number);
    if (std::strtod(text, nullptr) == number) break;
  }
  return text;
}

}  // namespace desk
