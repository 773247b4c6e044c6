// What is written at a piece, and what of it there is room for.
#pragma once

#include <string>
#include <vector>

#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;

/// What stays free between the texts of neighbours, mm.
constexpr double kBetweenLabels = 1.2;

/// The texts that fit; those that do not are empty.
struct PieceLabel {
  std::string number;     ///< for the middle of the piece
  std::string leftAngle;  ///< "45°"; empty also for a square end
  std::string length;
  std::string rightAngle;
  std::string barCode;  ///< perhaps cut, with an ellipsis
  bool isWhole = true;  ///< whether nothing is missing
};

/// @param name what the piece is called
/// @param barCode empty: none to write at the piece
/// @param length of the piece on paper, mm
PieceLabel labelOf(const PiecePlace& piece, const std::string& name, const std::string& barCode,
                   double length);

/// ", 45°/90°"; empty for two square ends.
std::string anglesText(const PiecePlace& piece);

/// All of it in one line, for where there is more room: "12: 385.5, 45°/90°, DEMO-0612".
std::string lineOf(const PiecePlace& piece, const std::string& name, const std::string& barCode);

/// `entries` one after the other in lines of `room` mm, as many as that takes but no more than
/// `most`.
std::vector<std::string> linesOf(const std::vector<std::string>& entries, double room,
                                 std::size_t most);

}  // namespace desk::draw
