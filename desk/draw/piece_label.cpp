#include "desk/draw/piece_label.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"

namespace desk::draw {

namespace {

/// Of a barcode, mm: less of its beginning says nothing.
constexpr double kLeastOfBarCode = 8.0;

std::string angleText(double angle) {
  return angle == 90.0 ? "" : hundredthsText(angle) + "°";
}

}  // namespace

PieceLabel labelOf(const PiecePlace& piece, const std::string& name, const std::string& barCode,
                   double length) {
  PieceLabel label;
  const std::string number = xmlText(name);
  const std::string wholeCode = xmlText(barCode);
  const std::string left = angleText(piece.leftCut);
  const std::string right = angleText(piece.rightCut);
  const std::string wholeLength = xmlText(lengthText(piece));
  const double room = length - kBetweenLabels;
  const double numberRoom = widthInMm(number, kNumber);
  const double angleRoom =
      2.0 * (std::max(widthInMm(left, kLabel), widthInMm(right, kLabel)) + kBetweenLabels);

  if (numberRoom <= room) label.number = number;
  if (numberRoom + angleRoom <= room) {
    label.leftAngle = left;
    label.rightAngle = right;
  }
  if (widthInMm(wholeLength, kLabel) <= room) label.length = wholeLength;
  if (widthInMm(wholeCode, kLabel) <= room || room >= kLeastOfBarCode) {
    label.barCode = truncatedToMm(wholeCode, room, kLabel);
  }
  label.isWhole = label.number == number && label.length == wholeLength &&
                  label.leftAngle == left && label.rightAngle == right &&
                  label.barCode == wholeCode;
  return label;
}

std::string anglesText(const PiecePlace& piece) {
  if (piece.leftCut == 90.0 && piece.rightCut == 90.0) return "";
  return ", " + hundredthsText(piece.leftCut) + "°/" + hundredthsText(piece.rightCut) + "°";
}

std::string lineOf(const PiecePlace& piece, const std::string& name, const std::string& barCode) {
  std::string line = xmlText(name) + ": ";
  line += piece.length > 0.0 ? xmlText(lengthText(piece)) : "no length";
  line += anglesText(piece);
  return barCode.empty() ? line : line + ", " + xmlText(barCode);
}

std::vector<std::string> linesOf(const std::vector<std::string>& entries, double room,
                                 std::size_t most) {
  std::vector<std::string> lines;
  for (const std::string& entry : entries) {
    const std::string more = "  ·  " + entry;
    if (!lines.empty() && widthInMm(lines.back() + more, kLabel) <= room) {
      lines.back() += more;
    } else if (lines.size() == most) {
      break;
    } else {
      lines.push_back(truncatedToMm(entry, room, kLabel));
    }
  }
  return lines;
}

}  // namespace desk::draw
