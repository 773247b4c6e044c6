// A piece's works and label in words, and a work as JSON.
#pragma once

#include <json/value.h>

#include <string>

#include "model/job_records.h"

namespace desk::job {

/// What is printed on a piece's label: its mark and the label fields that hold anything.
std::string labelText(const PIECE_T& piece);

/// "drill (side 1: 28, 32.5, 12)": the name, the side and the position along, across and in height.
std::string workText(const WORK_T& work);

/// An object with a member for each key of a work.
Json::Value workValue(const WORK_T& work);

}  // namespace desk::job
