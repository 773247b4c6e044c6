#include "model/job_lists.h"
#include "model/job_rows.h"
#include "xml/xml_analysis.h"

std::list<WORK_T> XmlAnalysis::getWork(std::string barCode) {
  return model::listWorksOf(data, barCode);
}

std::list<std::pair<std::string, WORK_T>> XmlAnalysis::getAllWork() {
  return model::listWorks(data);
}

std::list<RETURNACUT_T> XmlAnalysis::getCut(std::string barNumber) {
  return model::listCutsOf(data, barNumber);
}

std::list<RETURNACUT_T> XmlAnalysis::getAllCut() {
  return model::listCuts(data);
}

int XmlAnalysis::getMaxYZ_Cutlength(std::string barCode, std::string& maxY, std::string& maxZ,
                                    std::string& cutLength) {
  return model::lookUpDimensions(data, barCode, maxY, maxZ, cutLength);
}

std::vector<tagHOHEINFO> XmlAnalysis::getHole() {
  std::vector<model::HoleRow> rows;
  std::vector<tagHOHEINFO> holes;
  model::collectHoles(data, rows, holes);
  scratchList.clear();
  for (const tagHOHEINFO& hole : holes) scratchList.push_back(hole.name);
  return holes;
}

std::list<PRINT_T> XmlAnalysis::getPrint() {
  return model::listLabels(data);
}

std::string XmlAnalysis::getBarCode(const std::string& barNumber, const std::string& pieceNumber) {
  scratchList.clear();
  model::forEachPiece(data, [&](const BAR_T& bar, const PIECE_T& piece) {
    if (bar.BarNumber == barNumber && piece.PieceNumber == pieceNumber) {
      scratchList.push_back(piece.BarCode);
    }
  });
  return scratchList.empty() ? std::string() : scratchList.back();
}
