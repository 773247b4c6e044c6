// Calls what the C++ runtime has since GCC 11.
#include <charconv>

bool readLength(const char* first, const char* last, double& length);
bool readLength(const char* first, const char* last, double& length) {
  return std::from_chars(first, last, length).ec == std::errc();
}
