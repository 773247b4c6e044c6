#include <algorithm>
#include <utility>

#include "json/json_analysis.h"
#include "model/job_lists.h"
#include "model/job_walks.h"

namespace {

using BarCodes = std::map<std::string, std::map<std::string, std::string>>;
/// Fills a map anew that has the job's keys already, as when the same cuts are asked for again, if
/// no two pieces have the same numbers. False at the first difference; the map is then of no use.
bool refill(BarCodes& map, const DATA_T& job) {
  BarCodes left = std::exchange(map, {});
  for (const BAR_T& bar : job.Bar) {
    if (bar.piece.empty()) continue;
    BarCodes::node_type codes = left.extract(bar.BarNumber);
    if (codes.empty() || codes.mapped().size() != bar.piece.size()) return false;
    auto entry = codes.mapped().begin();
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      model::fetchNext(piece);
      if (entry->first != piece.PieceNumber) return false;
      (entry++)->second = piece.BarCode;
    }
    map.insert(std::move(codes));
  }
  return left.empty();
}

}  // namespace

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
  refillMaterialList();
  return model::listCuts(data);
}

void JsonAnalysis::refillMaterialList() {
  materialList.clear();
  for (const BAR_T& bar : data.Bar) {
    if (bar.piece.empty()) continue;
    materialList.insert(materialList.end(), bar.piece.size(), std::stoi(bar.BarNumber));
  }
}

int JsonAnalysis::getMaterialCount() {
  const auto highest = std::max_element(materialList.begin(), materialList.end());
  return highest == materialList.end() ? 0 : *highest;
}

int JsonAnalysis::getHeight(std::string& height) {
  if (!model::declaresVersion1(data) || data.Bar.empty()) return -1;
  height = data.Bar.front().MaxZ;
  return 0;
}

int JsonAnalysis::getMaxYZ_Cutlength(std::string barCode, std::string& maxY, std::string& maxZ,
                                     std::string& cutLength) {
  return model::lookUpDimensions(data, barCode, maxY, maxZ, cutLength);
}

std::vector<tagHOHEINFO> JsonAnalysis::getHole() {
  model::collectHoles(data, holeList);
  return holeList;
}

std::list<PRINT_T> JsonAnalysis::getPrint() {
  return model::listLabels(data);
}

void JsonAnalysis::getAllBarCodeToMap() {
  rebuildBarCodeMap();
}

bool JsonAnalysis::rebuildBarCodeMap() {
  if (refill(barCodeMap, data)) return true;
  barCodeMap.clear();
  bool distinct = true;
  for (const BAR_T& bar : data.Bar) {
    if (bar.piece.empty()) continue;
    BarCodes::mapped_type& codes = barCodeMap[bar.BarNumber];
    const std::size_t expected = codes.size() + bar.piece.size();
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      model::fetchNext(piece);
      // The hint is right when pieces come in the order of their numbers, as most do.
      codes.insert_or_assign(codes.end(), piece.PieceNumber, piece.BarCode);
    }
    distinct = distinct && codes.size() == expected;
  }
  return distinct;
}

std::string JsonAnalysis::getBarCode(const std::string& barNumber, const std::string& pieceNumber) {
  // kept: looking up an unknown piece adds it to the map, with an empty barcode
  return barCodeMap[barNumber][pieceNumber];
}
