#include "desk/draw/summary.h"

#include <algorithm>
#include <cstdio>

#include "desk/base/numbers.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"

namespace desk::draw {

namespace {

/// So many pieces are named; the others are counted.
constexpr std::size_t kNamed = 8;

/// Of a profile's name in the table, in columns.
constexpr std::size_t kLongestName = 32;

const char* wordsOf(Oddity oddity) {
  switch (oddity) {
    case Oddity::NoLength:
      return "the bar has no length";
    case Oddity::TooLong:
      return "the pieces do not fit: they are too long by ";
    case Oddity::NoPieces:
      return "no pieces";
    case Oddity::NoWidth:
      return "no width (MaxY): drawn with a usual one";
    case Oddity::NoPieceLength:
      return "no length to cut, left out";
    case Oddity::TrailingText:
      return "a number is followed by something else";
    case Oddity::NoAngle:
      return "an end has no angle between 0 and 180, drawn square";
    case Oddity::CrossingCuts:
      return "too short for its angles, drawn square";
    case Oddity::RightAngle135:
      return "the right end stays 135; a JSON job would make it 45";
    case Oddity::WorkOffPiece:
      break;
  }
  return "works beside the piece, left out";
}

std::string piecesText(const BAR_T& bar, const std::vector<int>& places) {
  std::string text = places.size() == 1 ? "piece " : "pieces ";
  const std::size_t named = std::min(places.size(), kNamed);
  for (std::size_t i = 0; i < named; ++i) text += (i > 0 ? ", " : "") + pieceName(bar, places[i]);
  if (places.size() > named) text += " and " + std::to_string(places.size() - named) + " more";
  return text;
}

bool hasYield(const BarPlace& bar) {
  const auto tooLong = [](const Oddness& oddness) { return oddness.oddity == Oddity::TooLong; };
  return bar.length > 0.0 && std::none_of(bar.oddities.begin(), bar.oddities.end(), tooLong);
}

std::string percentText(double part) {
  char text[32] = "";
  std::snprintf(text, sizeof text, "%.1f %%", 100.0 * part);
  return text;
}

/// What the job says is left over, where that is something else than what the lengths say.
std::string statedText(const BarPlace& bar) {
  const std::string& stated = bar.bar->BarLeftLength;
  return stated.empty() || stated == hundredthsText(bar.leftOver()) ? "" : stated;
}

}  // namespace

std::string yieldText(const BarPlace& bar) {
  return hasYield(bar) ? percentText(bar.used / bar.length) : "";
}

std::string summaryText(const BarPlace& bar) {
  std::string text = countText(bar.pieces.size(), "piece") + ", " + hundredthsText(bar.used);
  if (bar.length > 0.0) text += " of " + hundredthsText(bar.length);
  text += " used";
  if (!hasYield(bar)) return text;
  const std::string stated = statedText(bar);
  text += ", " + hundredthsText(bar.leftOver()) + " left over";
  if (!stated.empty()) text += " (the job says " + stated + ")";
  return text + ", yield " + yieldText(bar);
}

std::string pieceName(const BAR_T& bar, int place) {
  const std::string& number = bar.piece[static_cast<std::size_t>(place - 1)].PieceNumber;
  return number.empty() ? "(" + std::to_string(place) + ")" : number;
}

std::vector<std::string> remarkTexts(const BarPlace& bar) {
  std::vector<std::string> texts;
  for (const Oddness& oddness : bar.oddities) {
    std::string text = wordsOf(oddness.oddity);
    if (oddness.oddity == Oddity::TooLong) text += hundredthsText(-bar.leftOver());
    if (!oddness.pieces.empty()) text.insert(0, piecesText(*bar.bar, oddness.pieces) + ": ");
    texts.push_back(text);
  }
  return texts;
}

std::string totalText(const std::vector<BarPlace>& bars) {
  std::size_t pieces = 0;
  double used = 0.0;
  double length = 0.0;
  for (const BarPlace& bar : bars) {
    pieces += bar.pieces.size();
    if (!hasYield(bar)) continue;
    used += bar.used;
    length += bar.length;
  }
  const std::string counts = countText(bars.size(), "bar") + ", " + countText(pieces, "piece");
  return length > 0.0 ? counts + ", yield " + percentText(used / length) : counts;
}

TextTable summaryTable(const std::vector<BarPlace>& bars) {
  TextTable table;
  table.keys = {"bar", "profile", "pieces", "length", "used", "left", "stated", "yield"};
  for (const BarPlace& bar : bars) {
    const std::vector<std::string> texts = {
        bar.bar->BarNumber,
        truncatedToColumns(escapeControls(bar.bar->BarName), kLongestName),
        std::to_string(bar.pieces.size()),
        bar.length > 0.0 ? hundredthsText(bar.length) : "",
        hundredthsText(bar.used),
        bar.length > 0.0 ? hundredthsText(bar.leftOver()) : "",
        bar.bar->BarLeftLength,
        yieldText(bar),
    };
    std::vector<Cell>& row = table.rows.emplace_back();
    for (const std::string& text : texts) row.push_back({text});
  }
  return table;
}

}  // namespace desk::draw
