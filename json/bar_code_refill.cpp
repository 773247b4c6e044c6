#include "json/bar_code_refill.h"

#include <utility>

#include "model/job_walks.h"

BarCodeRefill::BarCodeRefill(BarCodeMap& map) : map_(map), left_(std::exchange(map, {})) {}

bool BarCodeRefill::tryAdd(const BAR_T& bar) {
  if (bar.piece.empty()) return true;
  BarCodeMap::node_type codes = left_.extract(bar.BarNumber);
  if (codes.empty() || codes.mapped().size() != bar.piece.size()) return false;
  auto entry = codes.mapped().begin();
  for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
    model::prefetch(&piece + 1);
    if (entry->first != piece.PieceNumber) return false;
    (entry++)->second = piece.BarCode;
  }
  map_.insert(std::move(codes));
  return true;
}
