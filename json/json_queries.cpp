#include <algorithm>

#include "json/bar_code_refill.h"
#include "json/json_analysis.h"
#include "model/job_lists.h"
#include "model/job_rows.h"

std::list<WORK_T> JsonAnalysis::getWork(std::string barCode) {
  return model::listWorksOf(data, barCode);
}

std::list<std::pair<std::string, WORK_T>> JsonAnalysis::getAllWork() {
  return model::listWorks(data);
}

std::list<RETURNACUT_T> JsonAnalysis::getCut(std::string barNumber) {
  return model::listCutsOf(data, barNumber);
}

std::list<RETURNACUT_T> JsonAnalysis::getAllCut() {
  refillMaterialList(*this);
  return model::listCuts(data);
}

void refillMaterialList(JsonAnalysis& reader) {
  std::vector<int>& list = reader.materialList;
  list.clear();
  for (const BAR_T& bar : reader.data.Bar) {
    if (bar.piece.empty()) continue;
    list.insert(list.end(), bar.piece.size(), std::stoi(bar.BarNumber));
  }
}

int JsonAnalysis::getMaterialCount() {
  const auto highest = std::max_element(materialList.begin(), materialList.end());
  return highest == materialList.end() ? 0 : *highest;
}

int JsonAnalysis::getHeight(std::string& height) {
  const model::Text found = model::profileHeightOf(data);
  if (found == nullptr) return -1;
  height = *found;
  return 0;
}

int JsonAnalysis::getMaxYZ_Cutlength(std::string barCode, std::string& maxY, std::string& maxZ,
                                     std::string& cutLength) {
  return model::lookUpDimensions(data, barCode, maxY, maxZ, cutLength);
}

std::vector<tagHOHEINFO> JsonAnalysis::getHole() {
  std::vector<model::HoleRow> rows;
  model::collectHoles(data, rows, holeList);
  return holeList;
}

std::list<PRINT_T> JsonAnalysis::getPrint() {
  return model::listLabels(data);
}

void JsonAnalysis::getAllBarCodeToMap() {
  BarCodeRefill refill(barCodeMap);
  if (std::all_of(data.Bar.begin(), data.Bar.end(),
                  [&](const BAR_T& bar) { return refill.tryAdd(bar); })) {
    return;
  }
  barCodeMap.clear();
  for (const BAR_T& bar : data.Bar) {
    if (bar.piece.empty()) continue;
    BarCodeMap::mapped_type& codes = barCodeMap[bar.BarNumber];
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      model::prefetch(&piece + 1);
      // The hint is right when pieces come in the order of their numbers, as most do.
      codes.insert_or_assign(codes.end(), piece.PieceNumber, piece.BarCode);
    }
  }
}

std::string JsonAnalysis::getBarCode(const std::string& barNumber, const std::string& pieceNumber) {
  // kept: looking up an unknown piece adds it to the map, with an empty barcode
  return barCodeMap[barNumber][pieceNumber];
}
