// What each query answers with: its rows, made once.
//
// A maker hands its rows to a sink in the order in which scripts get them. A sink is called with a
// row for each, `sink(row)`, valid until the next call, and where it says so with
// `sink.unknown(barCode)` for each look-up of dimensions that fails and with `sink.startAnew()`
// when the rows before are worth nothing. What a row points to lives as long as the bars of the
// job.
#pragma once

#include <string>

#include "json/json_analysis.h"
#include "model/first_pieces.h"
#include "model/job_rows.h"
#include "model/job_walks.h"
#include "module/script_rows.h"

namespace job_rows {

using model::JobView;
using script_rows::Dimensions;

inline Dimensions dimensionsOf(const model::PieceOnBar& found) {
  return {&found.bar->MaxY, &found.bar->MaxZ, &found.piece->Length};
}

inline void set(script_rows::Work& row, const WORK_T& work) {
  row.name = &work.Name;
  row.positionX = &work.PositionX;
  row.positionY = &work.PositionY;
  row.positionZ = &work.PositionZ;
}

/// get_work(""): every work with its piece's barcode. Calls `unknown`.
template <class Sink>
void allWorks(const JobView& job, Sink&& sink) {
  // The first piece in file order gives the dimensions of a barcode, and that is also the first one
  // that this walk meets: so one walk does, where a look-up per work would take time squared.
  model::FirstPieces firstPieces(job);
  script_rows::Work row;
  model::forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    const model::PieceOnBar first = firstPieces.firstWithBarCode({&bar, &piece});
    row.barCode = &piece.BarCode;
    if (job.isVersion1()) static_cast<Dimensions&>(row) = dimensionsOf(first);
    for (const WORK_T& work : piece.work) {
      if (!job.isVersion1()) sink.unknown(piece.BarCode);
      set(row, work);
      sink(row);
    }
  });
}

/// get_work(barCode): the works of every piece that bears it. Calls `unknown`.
template <class Sink>
void worksOf(const JobView& job, const std::string& barCode, Sink&& sink) {
  script_rows::Work row;
  const model::PieceOnBar found = model::findPiece(job, barCode);
  if (found.piece != nullptr) {
    static_cast<Dimensions&>(row) = dimensionsOf(found);
  } else {
    sink.unknown(barCode);
  }
  model::forEachWorkOf(job, barCode, [&](const WORK_T& work) {
    set(row, work);
    sink(row);
  });
}

/// get_work.
template <class Sink>
void works(const JobView& job, const std::string& barCode, Sink&& sink) {
  if (barCode.empty()) {
    allWorks(job, sink);
  } else {
    worksOf(job, barCode, sink);
  }
}

/// get_cut: asks the JSON reader first, then makes rows of what was there then.
class Cuts {
 public:
  /// @param job        the current one, of either format; null for none
  /// @param barNumber  empty: all cuts
  /// @param reader     the JSON reader: its map is refilled, and its material list when all cuts of
  ///                   its own job are asked for. Throws as JsonAnalysis::getAllCut does.
  Cuts(const DATA_T* job, const std::string& barNumber, JsonAnalysis& reader);
  Cuts(const Cuts&) = delete;
  Cuts& operator=(const Cuts&) = delete;

  template <class Sink>
  void forEach(Sink&& sink) {
    script_rows::Cut row = shared_;
    if (barNumber_.empty()) {
      model::Prefetcher ahead(job_);
      for (const BAR_T& bar : job_) {
        model::forEachCutOf(bar, row, [&](const PIECE_T& piece) {
          ahead.advance();
          row.barCode = ownBarCodes_ ? &piece.BarCode : barCodeByNumbers(bar, piece);
          sink(row);
        });
      }
    } else {
      model::forEachBarOf(job_, barNumber_, [&](const BAR_T& bar) {
        model::forEachCutOf(bar, row, [&](const PIECE_T&) { sink(row); });
      });
    }
  }

 private:
  model::Text barCodeByNumbers(const BAR_T& bar, const PIECE_T& piece);
  void gatherBarCodes(bool ownJob, const JsonAnalysis& reader);

  JobView job_;
  std::string barNumber_;
  std::string materialCount_;
  script_rows::Cut shared_;  ///< what is the same on every row
  /// Whether each piece has the barcode that goes with its numbers: no two have the same numbers.
  bool ownBarCodes_ = false;
  model::LastPieces lastPieces_;  ///< of the JSON job, by their numbers; for all cuts else
};

/// get_Dimensions: once for each work of the piece. Calls `unknown` and `startAnew`.
template <class Sink>
void dimensions(const JobView& job, const std::string& barCode, Sink&& sink) {
  const model::PieceOnBar found = model::findPiece(job, barCode);
  bool holdsRows = false;
  // kept: a work of another piece makes the rows found so far worthless, so that scripts see only
  // those behind the last such work
  model::forEachWork(job, [&](const PIECE_T& piece, const WORK_T&) {
    if (piece.BarCode == barCode) {
      if (found.piece == nullptr) sink.unknown(barCode);
      sink(found.piece != nullptr ? dimensionsOf(found) : Dimensions{});
      holdsRows = true;
    } else if (holdsRows) {
      sink.startAnew();
      holdsRows = false;
    }
  });
}

}  // namespace job_rows
