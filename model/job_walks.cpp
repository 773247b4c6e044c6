#include "model/job_walks.h"

#include <cstdio>
#include <string_view>
#include <unordered_set>

#include "model/number_text.h"

namespace model {

bool declaresVersion1(const DATA_T& job) {
  return job.Version == "1.0";
}

std::string pieceCountOf(const BAR_T& bar) {
  return std::to_string(static_cast<unsigned>(bar.piece.size()));
}

void setBarOfLabel(PRINT_T& row, const BAR_T& bar) {
  row.sProfileName = bar.DXF_Name;
  row.sProfileLength = bar.length;
  row.sNameProduct = bar.BarName;
  row.sColor = bar.BarColor;
  row.sLengthProduct = bar.BarLeftLength;
}

void collectHoles(const DATA_T& job, std::vector<tagHOHEINFO>& holes) {
  holes.clear();
  std::unordered_set<std::string_view> known;
  forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece) {
    for (const WORK_T& work : piece.work) {
      if (!known.insert(work.Name).second) continue;
      const double length = toDouble(piece.Length.c_str());
      const double width = toDouble(bar.MaxY.c_str());
      const double height = toDouble(bar.MaxZ.c_str());
      holes.push_back({work.Name, length, width, height});
    }
  });
}

PieceOnBar findPiece(const DATA_T& job, const std::string& barCode) {
  if (!declaresVersion1(job)) return {};
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      if (piece.BarCode == barCode) return {&bar, &piece};
    }
  }
  return {};
}

void reportUnknownBarCode(const std::string& barCode) {
  // kept: scripts and technicians look for this line as it is spelt
  std::printf("Faild to find the BarCode,the BarCode is %s \n", barCode.c_str());
}

int lookUpDimensions(const DATA_T& job, const std::string& barCode, std::string& maxY,
                     std::string& maxZ, std::string& cutLength) {
  const PieceOnBar found = findPiece(job, barCode);
  if (found.piece == nullptr) {
    reportUnknownBarCode(barCode);
    return -1;
  }
  cutLength = found.piece->Length;
  maxY = found.bar->MaxY;
  maxZ = found.bar->MaxZ;
  return 0;
}

}  // namespace model
