#include "model/job_rows.h"

#include <string_view>
#include <unordered_set>

#include "model/number_text.h"

namespace model {

const std::string kNoText;

namespace {

ParsedNumber parsed(const std::string& text) {
  return {&text, toDouble(text.c_str())};
}

}  // namespace

std::string pieceCountOf(const BAR_T& bar) {
  return std::to_string(static_cast<unsigned>(bar.piece.size()));
}

void collectHoles(const JobView& job, std::vector<HoleRow>& rows, std::vector<tagHOHEINFO>& holes) {
  rows.clear();
  holes.clear();
  rows.reserve(holes.capacity());  // asked for the same again, it grows no more
  std::unordered_set<std::string_view> known;
  forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    for (const WORK_T& work : piece.work) {
      if (!known.insert(work.Name).second) continue;
      const HoleRow row{&work.Name, parsed(piece.Length), parsed(bar.MaxY), parsed(bar.MaxZ)};
      holes.push_back({work.Name, row.length.number, row.width.number, row.height.number});
      rows.push_back(row);
    }
  });
}

Text profileHeightOf(const JobView& job) {
  return job.isVersion1() && job.begin() != job.end() ? &job.begin()->MaxZ : nullptr;
}

Text barCodeOf(const JobView& job, const std::string& barNumber, const std::string& pieceNumber) {
  Text last = &kNoText;
  for (const BAR_T& bar : job) {
    if (bar.BarNumber != barNumber) continue;
    for (const PIECE_T& piece : bar.piece) {
      if (piece.PieceNumber == pieceNumber) last = &piece.BarCode;
    }
  }
  return last;
}

}  // namespace model
