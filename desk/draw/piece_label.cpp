#include "desk/draw/piece_label.h"

#include <algorithm>

#include "desk/display_width.h"
#include "desk/draw/summary.h"
#include "desk/host/svg/xml_text.h"

namespace desk::draw {

namespace {

/// Of a column, in em. On the safe side: viewers choose the face.
constexpr double kColumnWidth = 0.62;

/// Of a barcode, below which its beginning says nothing.
constexpr std::size_t kLeastColumns = 5;

std::string angleText(double angle) {
  return angle == 90.0 ? "" : numberText(angle) + "°";
}

}  // namespace

std::size_t columnsIn(double room, double fontSize) {
  return room <= 0.0 ? 0 : static_cast<std::size_t>(room / (kColumnWidth * fontSize));
}

double widthOf(const std::string& text, double fontSize) {
  return kColumnWidth * fontSize * static_cast<double>(displayWidth(text));
}

PieceLabel labelOf(const PiecePlace& piece, const std::string& name, double room) {
  PieceLabel label;
  const std::string number = deskhost::xmlText(name);
  const std::string barCode = deskhost::xmlText(piece.piece->BarCode);
  const std::string left = angleText(piece.leftAngle);
  const std::string right = angleText(piece.rightAngle);
  const std::string length = numberText(piece.length);
  const std::size_t columns = columnsIn(room - kBetweenLabels, kLabelSize);
  const double angleRoom =
      2.0 * (std::max(widthOf(left, kLabelSize), widthOf(right, kLabelSize)) + kBetweenLabels);

  if (widthOf(number, kNumberSize) <= room - kBetweenLabels) label.number = number;
  if (widthOf(number, kNumberSize) + angleRoom <= room - kBetweenLabels) {
    label.leftAngle = left;
    label.rightAngle = right;
  }
  if (displayWidth(length) <= columns) label.length = length;
  if (displayWidth(barCode) <= columns || columns >= kLeastColumns) {
    label.barCode = fitted(barCode, columns);
  }
  label.isWhole = label.number == number && label.length == length && label.leftAngle == left &&
                  label.rightAngle == right && label.barCode == barCode;
  return label;
}

std::string lineOf(const PiecePlace& piece, const std::string& name) {
  std::string line = deskhost::xmlText(name) + ": ";
  line += piece.length > 0.0 ? numberText(piece.length) : "no length";
  if (piece.leftAngle != 90.0 || piece.rightAngle != 90.0) {
    line += ", " + numberText(piece.leftAngle) + "°/" + numberText(piece.rightAngle) + "°";
  }
  const std::string barCode = deskhost::xmlText(piece.piece->BarCode);
  return barCode.empty() ? line : line + ", " + barCode;
}

std::vector<std::string> linesOf(const std::vector<std::string>& entries, std::size_t columns) {
  constexpr char kBetween[] = "  ·  ";
  std::vector<std::string> lines;
  for (const std::string& entry : entries) {
    const bool joins =
        !lines.empty() && displayWidth(lines.back() + kBetween) + displayWidth(entry) <= columns;
    if (joins) {
      lines.back() += kBetween + entry;
    } else {
      lines.push_back(fitted(entry, columns));
    }
  }
  return lines;
}

}  // namespace desk::draw
