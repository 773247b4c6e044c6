#include "desk/job/selection.h"

#include <algorithm>

#include "desk/base/errors.h"

namespace desk::job {

void requireAny(const std::string& command, const DATA_T& job, const Selection& selection) {
  bool hasBar = selection.bar.empty();
  for (const BAR_T& bar : job.Bar) {
    if (!selection.has(bar)) continue;
    hasBar = true;
    const auto isMeant = [&](const PIECE_T& piece) { return selection.has(piece); };
    if (std::any_of(bar.piece.begin(), bar.piece.end(), isMeant)) return;
  }
  if (hasBar && selection.barCode.empty()) return;
  const std::string what = !hasBar ? "the job has no bar " + selection.bar
                                   : (selection.bar.empty() ? "the job" : "bar " + selection.bar) +
                                         " has no piece with barcode " + selection.barCode;
  throw Error(kExitIoError, command + ": " + what);
}

}  // namespace desk::job
