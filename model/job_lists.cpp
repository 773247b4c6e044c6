#include "model/job_lists.h"

#include "model/job_walks.h"

namespace model {

namespace {

/// A cut row, all but the piece's number.
RETURNACUT_T cutOf(const BAR_T& bar, const PIECE_T& piece) {
  return {bar.BarNumber,     bar.length,       piece.Length, piece.sxB, piece.dxB,
          pieceCountOf(bar), piece.order_code, bar.BarName,  {}};
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
  forEachBarOf(job, barNumber, [&](const BAR_T& bar) {
    for (const PIECE_T& piece : bar.piece) cuts.push_back(cutOf(bar, piece));
  });
  return cuts;
}

std::list<RETURNACUT_T> listCuts(const DATA_T& job) {
  std::list<RETURNACUT_T> cuts;
  forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    cuts.push_back(cutOf(bar, piece));
    cuts.back().PieceNumber = piece.PieceNumber;
  });
  return cuts;
}

std::list<PRINT_T> listLabels(const DATA_T& job) {
  std::list<PRINT_T> labels;
  forEachLabel(job, [&](const PRINT_T& row) { labels.push_back(row); });
  return labels;
}

}  // namespace model
