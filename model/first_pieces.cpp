#include "model/first_pieces.h"

#include <functional>
#include <string>

namespace model {
namespace {

std::size_t slotsFor(const JobView& job) {
  std::size_t pieces = 0;
  for (const BAR_T& bar : job) pieces += bar.piece.size();
  std::size_t slots = 2;
  while (slots < 2 * pieces) slots *= 2;
  return slots;
}

}  // namespace

PieceTable::PieceTable(const JobView& job) : slots_(slotsFor(job)) {}

PieceOnBar FirstPieces::firstWithBarCode(const PieceOnBar& piece) {
  const std::string& barCode = piece.piece->BarCode;
  const std::size_t hash = std::hash<std::string>()(barCode);
  PieceTable::Slot& slot =
      pieces_.find(hash, [&](const PieceOnBar& known) { return known.piece->BarCode == barCode; });
  if (slot.piece.piece == nullptr) slot = {piece, hash};
  return slot.piece;
}

LastPieces::LastPieces(const JobView& job) : pieces_(job) {
  for (const BAR_T& bar : job) {
    for (const PIECE_T& piece : bar.piece) {
      slotOf(bar.BarNumber, piece.PieceNumber).piece = {&bar, &piece};
    }
  }
}

const PIECE_T* LastPieces::find(const std::string& barNumber, const std::string& pieceNumber) {
  return slotOf(barNumber, pieceNumber).piece.piece;
}

PieceTable::Slot& LastPieces::slotOf(const std::string& barNumber, const std::string& pieceNumber) {
  const std::hash<std::string> hashOf;
  const std::size_t hash = hashOf(barNumber) * 31 + hashOf(pieceNumber);
  PieceTable::Slot& slot = pieces_.find(hash, [&](const PieceOnBar& known) {
    return known.bar->BarNumber == barNumber && known.piece->PieceNumber == pieceNumber;
  });
  slot.hash = hash;
  return slot;
}

}  // namespace model
