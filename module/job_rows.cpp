#include "module/job_rows.h"

#include <algorithm>
#include <numeric>

namespace job_rows {
namespace {

/// The number of the bar whose pieces gave the material list its highest entry.
model::Text highestBarNumber(const JobView& job, const std::vector<int>& materialList) {
  auto index = static_cast<std::size_t>(std::max_element(materialList.begin(), materialList.end()) -
                                        materialList.begin());
  for (const BAR_T& bar : job) {
    if (index < bar.piece.size()) return &bar.BarNumber;
    index -= bar.piece.size();
  }
  return nullptr;
}

/// Whether no two pieces of the job that filled the map have the same numbers.
bool numbersAreUnique(const JsonAnalysis& reader) {
  std::size_t pieces = 0;
  for (const BAR_T& bar : reader.data.Bar) pieces += bar.piece.size();
  for (const auto& [barNumber, barCodes] : reader.barCodeMap) pieces -= barCodes.size();
  return pieces == 0;
}

}  // namespace

Cuts::Cuts(const DATA_T* job, const std::string& barNumber, JsonAnalysis& reader)
    : job_(job == nullptr ? JobView() : JobView(*job)), barNumber_(barNumber) {
  const bool ownJob = job == &reader.data;
  // All bar numbers are converted before the first row is made: one that is no number raises.
  if (barNumber.empty() && ownJob) {
    refillMaterialList(reader);
    shared_.highestBar.source = highestBarNumber(job_, reader.materialList);
  }
  materialCount_ = std::to_string(reader.getMaterialCount());
  shared_.highestBar.text = &materialCount_;
  if (const model::Text height = model::profileHeightOf(reader.data)) shared_.height = height;
  reader.getAllBarCodeToMap();
  if (job != nullptr) gatherBarCodes(ownJob, reader);
}

void Cuts::gatherBarCodes(bool ownJob, const JsonAnalysis& reader) {
  if (!barNumber_.empty()) {
    shared_.barCode = model::barCodeOf(reader.data, barNumber_, "");
    return;
  }
  ownBarCodes_ = ownJob && numbersAreUnique(reader);
  if (!ownBarCodes_) lastPieces_ = model::LastPieces(reader.data);
}

model::Text Cuts::barCodeByNumbers(const BAR_T& bar, const PIECE_T& piece) {
  const PIECE_T* const last = lastPieces_.find(bar.BarNumber, piece.PieceNumber);
  return last == nullptr ? &model::kNoText : &last->BarCode;
}

}  // namespace job_rows
