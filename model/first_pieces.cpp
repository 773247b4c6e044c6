#include "model/first_pieces.h"

#include <functional>
#include <string>

namespace model {
namespace {

std::size_t slotsFor(const DATA_T& job) {
  std::size_t pieces = 0;
  for (const BAR_T& bar : job.Bar) pieces += bar.piece.size();
  std::size_t slots = 2;
  while (slots < 2 * pieces) slots *= 2;
  return slots;
}

}  // namespace

FirstPieces::FirstPieces(const DATA_T& job) : slots_(slotsFor(job)) {}

PieceOnBar FirstPieces::meet(const PieceOnBar& piece) {
  const std::string& barCode = piece.piece->BarCode;
  const std::size_t hash = std::hash<std::string>()(barCode);
  for (std::size_t i = hash;; ++i) {
    Slot& slot = slots_[i & (slots_.size() - 1)];
    if (slot.first.piece == nullptr) {
      slot = {piece, hash};
      return piece;
    }
    if (slot.hash == hash && slot.first.piece->BarCode == barCode) return slot.first;
  }
}

}  // namespace model
