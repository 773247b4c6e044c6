// The walks over a job that the queries of both readers share.
//
// A walk reads the records in place, in file order, and hands what it finds to a sink: any callable
// of the shape given. References stay valid for the length of the walk only where a working row is
// handed out, and as long as the job is not changed where records are.
#pragma once

#include <string>
#include <vector>

#include "model/job_records.h"
#include "model/query_rows.h"

namespace model {

/// Whether the header declares the one version that the gated queries answer for.
bool declaresVersion1(const DATA_T& job);

/// Asks for what the walks look at in a piece. Only a hint: nothing is read, so that the piece need
/// not be there.
inline void fetch(const PIECE_CHILD_SECOND_T* piece) {
  __builtin_prefetch(&piece->PieceNumber);
  __builtin_prefetch(&piece->BarCode);
  __builtin_prefetch(&piece->Length);
  __builtin_prefetch(&piece->sxB);
  __builtin_prefetch(&piece->work);
  __builtin_prefetch(&piece->cut_angle_convert);
}

/// Asks for what the walks look at in a bar.
inline void fetch(const BAR_T* bar) {
  __builtin_prefetch(&bar->DXF_Name);
  __builtin_prefetch(&bar->MaxY);
  __builtin_prefetch(&bar->length);
  __builtin_prefetch(&bar->BarColor);
  __builtin_prefetch(&bar->piece);
}

/// Asks for the works of a piece.
inline void fetchWorks(const PIECE_T& piece) {
  for (const WORK_T& work : piece.work) __builtin_prefetch(&work);
}

/// Goes two pieces ahead of a walk over all pieces and asks for them: a piece is larger than what a
/// processor fetches by itself, and making the rows of one takes long enough to fetch another.
class Lookahead {
 public:
  explicit Lookahead(const DATA_T& job) : bar_(job.Bar.data()), lastBar_(bar_ + job.Bar.size()) {
    ask();
    advance();
  }

  /// To be called for each piece of the walk, before it is looked at.
  void advance() {
    if (piece_ == nullptr) return;
    fetchWorks(*piece_++);
    ask();
  }

 private:
  void ask() {
    while (piece_ == lastPiece_) {
      if (bar_ == lastBar_) {
        piece_ = nullptr;
        return;
      }
      piece_ = bar_->piece.data();
      lastPiece_ = piece_ + bar_->piece.size();
      fetch(++bar_);
    }
    fetch(piece_);
  }

  const BAR_T* bar_;  ///< the next one
  const BAR_T* lastBar_;
  const PIECE_CHILD_SECOND_T* piece_ = nullptr;  ///< asked for last; none behind the job's end
  const PIECE_CHILD_SECOND_T* lastPiece_ = nullptr;
};

/// Every piece: sink(bar, piece).
template <class Sink>
void forEachPiece(const DATA_T& job, Sink&& sink) {
  Lookahead ahead(job);
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      ahead.advance();
      sink(bar, piece);
    }
  }
}

/// Every work, of whatever version: sink(piece, work).
template <class Sink>
void forEachWork(const DATA_T& job, Sink&& sink) {
  forEachPiece(job, [&](const BAR_T&, const PIECE_CHILD_SECOND_T& piece) {
    for (const WORK_T& work : piece.work) sink(piece, work);
  });
}

/// The works of every piece that bears the barcode, nothing for another version: sink(work).
template <class Sink>
void forEachWorkOf(const DATA_T& job, const std::string& barCode, Sink&& sink) {
  if (!declaresVersion1(job)) return;
  forEachPiece(job, [&](const BAR_T&, const PIECE_CHILD_SECOND_T& piece) {
    if (piece.BarCode != barCode) return;
    for (const WORK_T& work : piece.work) sink(work);
  });
}

/// How many pieces a bar holds, as decimal text.
std::string pieceCountOf(const BAR_T& bar);

/// Every bar that bears the number, nothing for another version: sink(bar).
template <class Sink>
void forEachBarOf(const DATA_T& job, const std::string& barNumber, Sink&& sink) {
  if (!declaresVersion1(job)) return;
  for (const BAR_T& bar : job.Bar) {
    if (bar.BarNumber == barNumber) sink(bar);
  }
}

/// Fills the bar's share of a label row.
void setBarOfLabel(PRINT_T& row, const BAR_T& bar);

/// One label per piece: sink(row). The row is a working row.
template <class Sink>
void forEachLabel(const DATA_T& job, Sink&& sink) {
  PRINT_T row;
  Lookahead ahead(job);
  for (const BAR_T& bar : job.Bar) {
    setBarOfLabel(row, bar);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      ahead.advance();
      row.sProfileCode = piece.mark;
      row.sCutAngle = piece.cut_angle_convert;
      sink(static_cast<const PRINT_T&>(row));
    }
  }
}

/// Empties `holes`, then appends one entry per distinct work name, with the dimensions of the first
/// piece that it occurs on. Throws std::invalid_argument or std::out_of_range ("stod") when one of
/// them is no number; `holes` then keeps what was found before.
void collectHoles(const DATA_T& job, std::vector<tagHOHEINFO>& holes);

/// A piece and the bar it is cut from. Null pointers: no such piece.
struct PieceOnBar {
  const BAR_T* bar = nullptr;
  const PIECE_T* piece = nullptr;
};

/// The first piece in file order that bears the barcode; none for another version. Writes nothing.
PieceOnBar findPiece(const DATA_T& job, const std::string& barCode);

/// Writes the line that every failed look-up of dimensions leaves on standard output.
void reportUnknownBarCode(const std::string& barCode);

/// The dimensions that belong to a barcode: those of the first piece that bears it.
/// Returns 0, or -1 with a line on standard output and all three texts untouched.
int lookUpDimensions(const DATA_T& job, const std::string& barCode, std::string& maxY,
                     std::string& maxZ, std::string& cutLength);

}  // namespace model
