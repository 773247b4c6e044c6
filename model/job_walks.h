// The walks over a job that the queries of both readers share.
//
// A walk reads the records in place, in file order, and hands what it finds to a sink: any callable
// of the shape given. A record stays valid until the job changes.
#pragma once

#include <string>

#include "model/job_records.h"

namespace model {

/// Whether the header declares the one version that the gated queries answer for.
bool declaresVersion1(const DATA_T& job);

/// What the walks read of a job: its bars where they are in memory, and whether the gated queries
/// answer. A view stays good when its record takes in another job, as long as somebody keeps the
/// bars.
class JobView {
 public:
  JobView() = default;  ///< a job without bars
  // NOLINTNEXTLINE(google-explicit-constructor): whoever has a job can have it walked over
  JobView(const DATA_T& job)
      : first_(job.Bar.data()),
        last_(first_ + job.Bar.size()),
        isVersion1_(declaresVersion1(job)) {}

  const BAR_T* begin() const { return first_; }
  const BAR_T* end() const { return last_; }
  bool isVersion1() const { return isVersion1_; }

 private:
  const BAR_T* first_ = nullptr;
  const BAR_T* last_ = nullptr;
  bool isVersion1_ = false;
};

/// Prefetches the cache lines of a piece that the walks read. Any address is safe, also one past
/// the end.
inline void prefetch(const PIECE_CHILD_SECOND_T* piece) {
  __builtin_prefetch(&piece->PieceNumber);
  __builtin_prefetch(&piece->BarCode);
  __builtin_prefetch(&piece->Length);
  __builtin_prefetch(&piece->sxB);
  __builtin_prefetch(&piece->work);
  __builtin_prefetch(&piece->mark);
  __builtin_prefetch(&piece->cut_angle_convert);
}

/// The same for a bar.
inline void prefetch(const BAR_T* bar) {
  __builtin_prefetch(&bar->DXF_Name);
  __builtin_prefetch(&bar->MaxY);
  __builtin_prefetch(&bar->length);
  __builtin_prefetch(&bar->BarColor);
  __builtin_prefetch(&bar->piece);
}

/// The same for the works of a piece.
inline void prefetchWorks(const PIECE_T& piece) {
  for (const WORK_T& work : piece.work) __builtin_prefetch(&work);
}

/// Goes two pieces ahead of a walk over all pieces and prefetches them: a piece is larger than what
/// a processor fetches by itself, and making the rows of one takes long enough to fetch another.
class Prefetcher {
 public:
  explicit Prefetcher(const JobView& job) : bar_(job.begin()), lastBar_(job.end()) {
    next();
    advance();
  }

  /// To be called for each piece of the walk, before it is looked at.
  void advance() {
    if (piece_ == nullptr) return;
    prefetchWorks(*piece_++);
    next();
  }

 private:
  void next() {
    while (piece_ == lastPiece_) {
      if (bar_ == lastBar_) {
        piece_ = nullptr;
        return;
      }
      piece_ = bar_->piece.data();
      lastPiece_ = piece_ + bar_->piece.size();
      prefetch(++bar_);
    }
    prefetch(piece_);
  }

  const BAR_T* bar_;  ///< the next one
  const BAR_T* lastBar_;
  const PIECE_CHILD_SECOND_T* piece_ = nullptr;  ///< prefetched last; null behind the job's end
  const PIECE_CHILD_SECOND_T* lastPiece_ = nullptr;
};

/// Every piece: sink(bar, piece).
template <class Sink>
void forEachPiece(const JobView& job, Sink&& sink) {
  Prefetcher ahead(job);
  for (const BAR_T& bar : job) {
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      ahead.advance();
      sink(bar, piece);
    }
  }
}

/// Every work, of whatever version: sink(piece, work).
template <class Sink>
void forEachWork(const JobView& job, Sink&& sink) {
  forEachPiece(job, [&](const BAR_T&, const PIECE_CHILD_SECOND_T& piece) {
    for (const WORK_T& work : piece.work) sink(piece, work);
  });
}

/// The works of every piece that bears the barcode, nothing for another version: sink(work).
template <class Sink>
void forEachWorkOf(const JobView& job, const std::string& barCode, Sink&& sink) {
  if (!job.isVersion1()) return;
  forEachPiece(job, [&](const BAR_T&, const PIECE_CHILD_SECOND_T& piece) {
    if (piece.BarCode != barCode) return;
    for (const WORK_T& work : piece.work) sink(work);
  });
}

/// Every bar that bears the number, nothing for another version: sink(bar).
template <class Sink>
void forEachBarOf(const JobView& job, const std::string& barNumber, Sink&& sink) {
  if (!job.isVersion1()) return;
  for (const BAR_T& bar : job) {
    if (bar.BarNumber == barNumber) sink(bar);
  }
}

/// A piece and the bar it is cut from. Null pointers: no such piece.
struct PieceOnBar {
  const BAR_T* bar = nullptr;
  const PIECE_T* piece = nullptr;
};

/// The first piece in file order that bears the barcode; none for another version. Writes nothing.
PieceOnBar findPiece(const JobView& job, const std::string& barCode);

/// Writes the line that every failed look-up of dimensions leaves on standard output.
void reportUnknownBarCode(const std::string& barCode);

/// The dimensions that belong to a barcode: those of the first piece that bears it.
/// Returns 0, or -1 with a line on standard output and all three texts untouched.
int lookUpDimensions(const JobView& job, const std::string& barCode, std::string& maxY,
                     std::string& maxZ, std::string& cutLength);

}  // namespace model
