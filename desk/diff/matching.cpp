#include "desk/diff/matching.h"

namespace desk::diff {

namespace {

bool always(const BAR_T&, const BAR_T&) {
  return true;
}

/// A piece with a barcode of its own is no other one with another such barcode.
bool mayBeSame(const PlacedPiece& before, const PlacedPiece& after) {
  return !before.hasBarCode || !after.hasBarCode;
}

std::string numbersOf(const PlacedPiece& piece) {
  return piece.bar->BarNumber + '\0' + piece.piece->PieceNumber;
}

}  // namespace

std::vector<PlacedPiece> piecesOf(const DATA_T& job) {
  std::unordered_map<std::string, int> counts;
  std::vector<PlacedPiece> pieces;
  job::Element at;
  for (const BAR_T& bar : job.Bar) {
    ++at.bar;
    at.piece = 0;
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      ++at.piece;
      ++counts[piece.BarCode];
      pieces.push_back({&bar, &piece, at, false});
    }
  }
  for (PlacedPiece& piece : pieces) {
    const std::string& barCode = piece.piece->BarCode;
    piece.hasBarCode = !barCode.empty() && counts[barCode] == 1;
  }
  return pieces;
}

Matching matchBars(const DATA_T& before, const DATA_T& after) {
  Matching bars(before.Bar.size(), after.Bar.size());
  pairByKey(
      before.Bar, after.Bar, bars, [](const BAR_T& bar) { return bar.BarNumber; }, always);
  return bars;
}

Matching matchPieces(const std::vector<PlacedPiece>& before,
                     const std::vector<PlacedPiece>& after) {
  Matching pieces(before.size(), after.size());
  pairByKey(
      before, after, pieces, [](const PlacedPiece& piece) { return piece.piece->BarCode; },
      [](const PlacedPiece& a, const PlacedPiece& b) { return a.hasBarCode && b.hasBarCode; });
  pairByKey(before, after, pieces, numbersOf, mayBeSame);
  return pieces;
}

bool isReordered(const std::vector<int>& partners) {
  int last = -1;
  for (const int partner : partners) {
    if (partner < 0) continue;
    if (partner < last) return true;
    last = partner;
  }
  return false;
}

}  // namespace desk::diff
