// Which piece of a job is the first in file order to bear its barcode, or the last with its
// numbers.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/job_records.h"
#include "model/job_walks.h"

namespace model {

/// Pieces by their hash, in an open table. Allocates once, when constructed.
class PieceTable {
 public:
  /// A table for all pieces of a job.
  explicit PieceTable(const JobView& job);
  /// A table that must not be used.
  PieceTable() = default;

  struct Slot {
    PieceOnBar piece;
    std::size_t hash = 0;
  };

  /// The slot of the piece for which `isWanted(piece)` holds; an empty one where it belongs when
  /// there is none.
  template <class Test>
  Slot& find(std::size_t hash, Test&& isWanted) {
    for (std::size_t i = hash;; ++i) {
      Slot& slot = slots_[i & (slots_.size() - 1)];
      if (slot.piece.piece == nullptr) return slot;
      if (slot.hash == hash && isWanted(slot.piece)) return slot;
    }
  }

 private:
  std::vector<Slot> slots_;  ///< a power of two, at least half of them empty
};

/// The first piece of each barcode. Filled during a walk over all pieces and good for that walk
/// only.
class FirstPieces {
 public:
  explicit FirstPieces(const JobView& job) : pieces_(job) {}

  /// The first piece met so far that bears the barcode of this one: itself, when it is the first.
  PieceOnBar firstWithBarCode(const PieceOnBar& piece);

 private:
  PieceTable pieces_;
};

/// The last piece of each pair of bar number and piece number.
class LastPieces {
 public:
  LastPieces() = default;  ///< of no job: must not be asked
  explicit LastPieces(const JobView& job);

  /// Null when there is none.
  const PIECE_T* find(const std::string& barNumber, const std::string& pieceNumber);

 private:
  PieceTable::Slot& slotOf(const std::string& barNumber, const std::string& pieceNumber);

  PieceTable pieces_;
};

}  // namespace model
