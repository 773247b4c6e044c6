#include "model/job_lists.h"

#include "model/job_walks.h"

namespace model {

std::list<WORK_T> listWorksOf(const DATA_T& job, const std::string& barCode) {
  std::list<WORK_T> works;
  forEachWorkOf(job, barCode, [&](const WORK_T& work) { works.push_back(work); });
  return works;
}

std::list<std::pair<std::string, WORK_T>> listWorks(const DATA_T& job) {
  std::list<std::pair<std::string, WORK_T>> works;
  forEachWork(job, [&](const PIECE_T& piece, const WORK_T& work) {
    works.emplace_back(piece.BarCode, work);
  });
  return works;
}

std::list<RETURNACUT_T> listCutsOf(const DATA_T& job, const std::string& barNumber) {
  std::list<RETURNACUT_T> cuts;
  RETURNACUT_T row;
  forEachCutOf(job, barNumber, row, [&] { cuts.push_back(row); });
  return cuts;
}

std::list<RETURNACUT_T> listCuts(const DATA_T& job) {
  std::list<RETURNACUT_T> cuts;
  RETURNACUT_T row;
  forEachCut(job, row, [&] { cuts.push_back(row); });
  return cuts;
}

std::list<PRINT_T> listLabels(const DATA_T& job) {
  std::list<PRINT_T> labels;
  forEachLabel(job, [&](const PRINT_T& row) { labels.push_back(row); });
  return labels;
}

}  // namespace model
