#include "desk/draw/lettering.h"

#include <algorithm>
#include <cmath>

#include "part/cell_text.h"

namespace desk::draw {

namespace {

/// The table part measures in whole units.
constexpr double kUnits = 100.0;  ///< in a millimetre

Table::Font fontOf(const Lettering& lettering) {
  return {static_cast<int>(std::lround(lettering.size * kUnits)), lettering.bold};
}

}  // namespace

double widthOf(const std::string& text, const Lettering& lettering) {
  return Table::widthOf(text, fontOf(lettering)) / kUnits;
}

std::string fitted(const std::string& text, double room, const Lettering& lettering) {
  const int width = static_cast<int>(std::max(room, 0.0) * kUnits);
  return Table::fitText(text, width, fontOf(lettering));
}

}  // namespace desk::draw
