// A piece's works and label in words.
#pragma once

#include <string>

#include "model/job_records.h"

namespace desk::job {

/// What is printed on a piece's label: its mark and the label fields that hold anything.
std::string labelText(const PIECE_T& piece);

/// "drill (side 1: 28, 32.5, 12)": the name, the side and the position along, across and in height.
std::string workText(const WORK_T& work);

}  // namespace desk::job
