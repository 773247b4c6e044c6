#include <algorithm>
#include <vector>

#include "fuzz/query_checks.h"

namespace fuzzing::plain {
namespace {

RETURNACUT_T cutOf(const BAR_T& bar, const PIECE_CHILD_SECOND_T& piece) {
  RETURNACUT_T cut;
  cut.BarNumber = bar.BarNumber;
  cut.Length = bar.length;
  cut.CutLength = piece.Length;
  cut.SxB = piece.sxB;
  cut.DxB = piece.dxB;
  cut.CutNumBer = std::to_string(bar.piece.size());
  cut.OrderCode = piece.order_code;
  cut.BarName = bar.BarName;
  return cut;
}

PRINT_T labelOf(const BAR_T& bar, const PIECE_CHILD_SECOND_T& piece) {
  PRINT_T label;
  label.sProfileCode = piece.mark;
  label.sProfileName = bar.DXF_Name;
  label.sProfileLength = bar.length;
  label.sNameProduct = bar.BarName;
  label.sColor = bar.BarColor;
  label.sLengthProduct = bar.BarLeftLength;
  label.sCutAngle = piece.cut_angle_convert;
  return label;
}

}  // namespace

std::string works(const DATA_T& job) {
  std::string text;
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      for (const WORK_T& work : piece.work) text += textOf(piece.BarCode) + textOf(work) + "\n";
    }
  }
  return text;
}

std::string worksOf(const DATA_T& job, const std::string& barCode) {
  std::string text;
  if (gated(job)) return text;
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      if (piece.BarCode == barCode) text += textOfAll(piece.work);
    }
  }
  return text;
}

std::string cuts(const DATA_T& job) {
  std::string text;
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      RETURNACUT_T cut = cutOf(bar, piece);
      cut.PieceNumber = piece.PieceNumber;
      text += textOf(cut) + "\n";
    }
  }
  return text;
}

std::string cutsOf(const DATA_T& job, const std::string& barNumber) {
  std::string text;
  if (gated(job)) return text;
  for (const BAR_T& bar : job.Bar) {
    if (bar.BarNumber != barNumber) continue;
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) text += textOf(cutOf(bar, piece)) + "\n";
  }
  return text;
}

std::string labels(const DATA_T& job) {
  std::string text;
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) text += textOf(labelOf(bar, piece)) + "\n";
  }
  return text;
}

std::string holes(const DATA_T& job) {
  std::vector<tagHOHEINFO> found;
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      for (const WORK_T& work : piece.work) {
        const auto same = [&](const tagHOHEINFO& hole) { return hole.name == work.Name; };
        if (std::any_of(found.begin(), found.end(), same)) continue;
        const double length = std::stod(piece.Length);
        const double width = std::stod(bar.MaxY);
        found.push_back({work.Name, length, width, std::stod(bar.MaxZ)});
      }
    }
  }
  return textOfAll(found);
}

std::string dimensions(const DATA_T& job, const std::string& barCode) {
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      if (gated(job) || piece.BarCode != barCode) continue;
      return "0" + textOf(bar.MaxY) + textOf(bar.MaxZ) + textOf(piece.Length);
    }
  }
  return "-1" + textOf("y") + textOf("z") + textOf("l");
}

int highestBarNumber(const DATA_T& job) {
  std::vector<int> numbers;
  for (const BAR_T& bar : job.Bar) {
    if (!bar.piece.empty()) numbers.push_back(std::stoi(bar.BarNumber));
  }
  return numbers.empty() ? 0 : *std::max_element(numbers.begin(), numbers.end());
}

}  // namespace fuzzing::plain
