#include "model/job_walks.h"

#include <cstdio>

namespace model {

bool declaresVersion1(const DATA_T& job) {
  return job.Version == "1.0";
}

PieceOnBar findPiece(const JobView& job, const std::string& barCode) {
  if (!job.isVersion1()) return {};
  for (const BAR_T& bar : job) {
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

int lookUpDimensions(const JobView& job, const std::string& barCode, std::string& maxY,
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
