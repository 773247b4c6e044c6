// Which piece of a job is the first in file order to bear its barcode.
#pragma once

#include <cstddef>
#include <vector>

#include "model/job_records.h"
#include "model/job_walks.h"

namespace model {

/// Filled during a walk over all pieces and good for that walk only. Beside one per piece it makes
/// no allocation: its table is as large as it will ever need to be.
class FirstPieces {
 public:
  explicit FirstPieces(const DATA_T& job);

  /// The first piece met so far that bears the barcode of this one: itself, when it is the first.
  PieceOnBar meet(const PieceOnBar& piece);

 private:
  struct Slot {
    PieceOnBar first;
    std::size_t hash = 0;
  };
  std::vector<Slot> slots_;  ///< a power of two, at least half of them empty
};

}  // namespace model
