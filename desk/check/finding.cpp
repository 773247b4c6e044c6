#include "desk/check/finding.h"

#include <algorithm>

namespace desk::check {

bool makesRaise(const Finding& finding, Raises what) {
  const auto& all = finding.consequences;
  return finding.raises == what || std::any_of(all.begin(), all.end(), [&](const Finding& one) {
           return makesRaise(one, what);
         });
}

}  // namespace desk::check
