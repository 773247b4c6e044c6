// What is written at a piece, and what of it there is room for.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "desk/draw/bar_layout.h"

namespace desk::draw {

/// Heights of the em square, mm.
constexpr double kNumberSize = 3.2;
constexpr double kLabelSize = 2.6;

/// What stays free between the texts of neighbours, mm.
constexpr double kBetweenLabels = 1.2;

/// Columns of text that fit into `room` mm: Latin characters take one, Chinese ones two.
std::size_t columnsIn(double room, double fontSize);

/// How much room `text` takes at most, mm.
double widthOf(const std::string& text, double fontSize);

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
/// @param room how long the piece is on paper, mm
PieceLabel labelOf(const PiecePlace& piece, const std::string& name, double room);

/// All of it in one line, for where there is more room: "12: 385.5, 45°/90°, DEMO-0612".
std::string lineOf(const PiecePlace& piece, const std::string& name);

/// `entries` one after the other in lines of so many columns.
std::vector<std::string> linesOf(const std::vector<std::string>& entries, std::size_t columns);

}  // namespace desk::draw
