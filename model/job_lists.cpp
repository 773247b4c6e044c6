#include "model/job_lists.h"

#include "model/job_rows.h"

namespace model {

namespace {

/// Appends a copy of a cut, without the piece's number.
void append(std::list<RETURNACUT_T>& cuts, const CutRow& row) {
  RETURNACUT_T& cut = cuts.emplace_back();
  cut.BarNumber = *row.barNumber;
  cut.Length = *row.length;
  cut.CutLength = *row.cutLength;
  cut.SxB = *row.sxB;
  cut.DxB = *row.dxB;
  cut.CutNumBer = *row.piecesOnBar;
  cut.OrderCode = *row.orderCode;
  cut.BarName = *row.barName;
}

/// Appends a copy of a label.
void append(std::list<PRINT_T>& labels, const LabelRow& row) {
  PRINT_T& label = labels.emplace_back();
  label.sProfileCode = *row.profileCode.text;
  label.sProfileName = *row.profileName;
  label.sProfileLength = *row.profileLength;
  label.sNameProduct = *row.nameProduct;
  label.sColor = *row.color;
  label.sLengthProduct = *row.lengthProduct;
  label.sCutAngle = *row.cutAngle.text;
}

}  // namespace

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
  CutRow row;
  forEachBarOf(job, barNumber, [&](const BAR_T& bar) {
    forEachCutOf(bar, row, [&](const PIECE_T&) { append(cuts, row); });
  });
  return cuts;
}

std::list<RETURNACUT_T> listCuts(const DATA_T& job) {
  std::list<RETURNACUT_T> cuts;
  CutRow row;
  for (const BAR_T& bar : job.Bar) {
    forEachCutOf(bar, row, [&](const PIECE_T&) {
      append(cuts, row);
      cuts.back().PieceNumber = *row.pieceNumber;
    });
  }
  return cuts;
}

std::list<PRINT_T> listLabels(const DATA_T& job) {
  std::list<PRINT_T> labels;
  forEachLabel(job, [&](const LabelRow& row) { append(labels, row); });
  return labels;
}

}  // namespace model
