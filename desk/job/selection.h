// Bars and pieces that people ask for by their numbers and barcodes.
#pragma once

#include <string>

#include "model/job_records.h"

namespace desk::job {

/// Which of a job's bars and pieces are meant.
struct Selection {
  std::string bar;      ///< number; empty: any
  std::string barCode;  ///< empty: any

  bool has(const BAR_T& one) const { return bar.empty() || one.BarNumber == bar; }
  bool has(const PIECE_T& piece) const { return barCode.empty() || piece.BarCode == barCode; }
};

/// Throws Error for a selection that nothing of the job meets: "show: the job has no bar 99".
void requireAny(const std::string& command, const DATA_T& job, const Selection& selection);

}  // namespace desk::job
