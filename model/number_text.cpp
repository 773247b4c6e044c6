#include "model/number_text.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>

namespace model {

double toDouble(const char* text) {
  const int errorBefore = errno;
  errno = 0;
  char* end = nullptr;
  const double number = std::strtod(text, &end);
  const bool outOfRange = errno == ERANGE;
  if (errno == 0) errno = errorBefore;
  if (end == text) throw std::invalid_argument("stod");
  if (outOfRange) throw std::out_of_range("stod");
  return number;
}

}  // namespace model
