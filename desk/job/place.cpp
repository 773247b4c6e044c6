#include "desk/job/place.h"

namespace desk::job {

std::string describe(const Element& element) {
  if (element.bar == 0) return "the header";
  std::string text = "bar " + std::to_string(element.bar);
  if (element.piece != 0) text = "piece " + std::to_string(element.piece) + " of " + text;
  if (element.work != 0) text = "work " + std::to_string(element.work) + " of " + text;
  return text;
}

}  // namespace desk::job
