#include "desk/draw/summary.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/yield.h"

namespace desk::draw {

namespace {

/// So many pieces are named; the others are counted.
constexpr std::size_t kNamed = 8;

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

}  // namespace

std::string summaryText(const BarPlace& bar) {
  std::string text = countText(bar.pieces.size(), "piece") + ", " + hundredthsText(bar.used);
  if (bar.length > 0.0) text += " of " + hundredthsText(bar.length);
  text += " used";
  const std::string yield = yieldOf(bar).text();
  if (yield.empty()) return text;
  const std::string stated = statedLeftOver(bar);
  text += ", " + hundredthsText(bar.leftOver()) + " left over";
  if (!stated.empty()) text += " (" + stated + ")";
  return text + ", yield " + yield;
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
  Yield yield;
  for (const BarPlace& bar : bars) {
    pieces += bar.pieces.size();
    yield.add(bar);
  }
  const std::string counts = countText(bars.size(), "bar") + ", " + countText(pieces, "piece");
  return yield.length > 0.0 ? counts + ", yield " + yield.text() : counts;
}

TextTable summaryTable(const std::vector<BarPlace>& bars) {
  TextTable table;
  table.keys = {"bar", "profile", "pieces", "length", "used", "left", "stated", "yield"};
  for (const BarPlace& bar : bars) {
    const std::vector<std::string> texts = {
        bar.bar->BarNumber,
        bar.bar->BarName,
        std::to_string(bar.pieces.size()),
        bar.length > 0.0 ? hundredthsText(bar.length) : "",
        hundredthsText(bar.used),
        bar.length > 0.0 ? hundredthsText(bar.leftOver()) : "",
        bar.bar->BarLeftLength,
        yieldOf(bar).text(),
    };
    std::vector<Cell>& row = table.rows.emplace_back();
    for (const std::string& text : texts) row.push_back({text});
  }
  return table;
}

}  // namespace desk::draw
