#include <algorithm>
#include <utility>

#include "json/json_analysis.h"
#include "model/job_lists.h"
#include "model/job_walks.h"

namespace {

using BarCodes = std::map<std::string, std::map<std::string, std::string>>;
using Entry = BarCodes::mapped_type::node_type;

/// Takes any entry out of a map that is no longer needed. Empty when there is none.
Entry takeEntry(BarCodes& spare) {
  while (!spare.empty() && spare.begin()->second.empty()) spare.erase(spare.begin());
  if (spare.empty()) return {};
  BarCodes::mapped_type& codes = spare.begin()->second;
  return codes.extract(codes.begin());
}

/// Sets the barcode of a piece, in a used entry if there is one.
void setBarCode(BarCodes::mapped_type& codes, const PIECE_T& piece, Entry entry) {
  // The hint is right when pieces come in the order of their numbers, as most do.
  if (entry.empty()) {
    codes.insert_or_assign(codes.end(), piece.PieceNumber, piece.BarCode);
    return;
  }
  entry.key() = piece.PieceNumber;
  codes.insert(codes.end(), std::move(entry))->second = piece.BarCode;
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
  // Most entries come again: those of the last rebuild are filled anew rather than freed and made.
  BarCodes spare = std::exchange(barCodeMap, {});
  for (const BAR_T& bar : data.Bar) {
    if (bar.piece.empty()) continue;
    BarCodes::mapped_type& codes = barCodeMap[bar.BarNumber];
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      model::fetchNext(piece);
      setBarCode(codes, piece, takeEntry(spare));
    }
  }
}

std::string JsonAnalysis::getBarCode(const std::string& barNumber, const std::string& pieceNumber) {
  // kept: looking up an unknown piece adds it to the map, with an empty barcode
  return barCodeMap[barNumber][pieceNumber];
}
