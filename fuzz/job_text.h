// Jobs and rows as texts that are equal exactly when the records are.
#pragma once

#include <string>

#include "model/job_records.h"
#include "model/query_rows.h"

namespace fuzzing {

std::string textOf(const std::string& text);
std::string textOf(double number);
std::string textOf(const WORK_T& work);
std::string textOf(const RETURNACUT_T& cut);
std::string textOf(const tagHOHEINFO& hole);
std::string textOf(const PRINT_T& label);

/// The whole job, every field of every record.
std::string textOf(const DATA_T& job);

/// One text for a list of any of the above.
template <class Rows>
std::string textOfAll(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) text += textOf(row) + "\n";
  return text;
}

}  // namespace fuzzing
