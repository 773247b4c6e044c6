// What the walks over a job find, as lists of rows that the caller owns.
#pragma once

#include <list>
#include <string>
#include <utility>

#include "model/job_records.h"
#include "model/query_rows.h"

namespace model {

/// The works of every piece that bears the barcode. Empty for another version.
std::list<WORK_T> listWorksOf(const DATA_T& job, const std::string& barCode);

/// Every work with the barcode of its piece.
std::list<std::pair<std::string, WORK_T>> listWorks(const DATA_T& job);

/// The cuts of every bar that bears the number, without piece numbers. Empty for another version.
std::list<RETURNACUT_T> listCutsOf(const DATA_T& job, const std::string& barNumber);

/// All cuts.
std::list<RETURNACUT_T> listCuts(const DATA_T& job);

/// One label per piece.
std::list<PRINT_T> listLabels(const DATA_T& job);

}  // namespace model
