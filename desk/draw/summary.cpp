#include "desk/draw/summary.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/job/yield.h"

namespace desk::draw {

namespace {

/// What becomes of it in the picture, to be put behind what is odd.
const char* wordsOf(Drawn drawn) {
  switch (drawn) {
    case Drawn::AsItIs:
      break;
    case Drawn::LeftOut:
      return "; left out";
    case Drawn::Square:
      return "; drawn square";
    case Drawn::CutOff:
      return "; drawn cut off";
    case Drawn::OfUsualWidth:
      return "; drawn with a usual one";
    case Drawn::WithoutEnds:
      return "; drawn without its ends";
  }
  return "";
}

/// "piece 4, work 1"; empty for the bar itself.
std::string nameIn(const BarPlace& bar, const Element& element) {
  if (element.piece == 0) return "";
  const std::string piece = "piece " + pieceName(*bar.bar, element.piece);
  return element.work == 0 ? piece : piece + ", work " + std::to_string(element.work);
}

std::string textOf(const BarPlace& bar, const Oddity& oddity) {
  return nameIn(bar, oddity.value.element) + oddity.text + wordsOf(oddity.drawn);
}

std::string lineOf(const std::string& name, const std::string& text, const Oddity& oddity) {
  return std::string(nameOf(oddity.overall)) + ": " + name + text + " [" + oddity.rule + "]";
}

}  // namespace

std::string summaryText(const BarPlace& bar) {
  std::string text = countText(bar.pieces.size(), "piece") + ", ";
  if (bar.unknown > 0) return text + unknownText(bar);
  text += hundredthsText(bar.used);
  if (bar.isLengthKnown) text += " of " + hundredthsText(bar.length);
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

std::string workName(const std::string& name) {
  return name.empty() ? "no name" : name;
}

std::string lengthText(const PiecePlace& piece) {
  return piece.isLengthKnown ? hundredthsText(piece.length) : piece.piece->Length;
}

std::vector<std::string> remarkTexts(const BarPlace& bar) {
  std::vector<std::string> texts;
  if (bar.pieces.empty()) texts.emplace_back("no pieces");
  std::map<std::string, std::size_t> counts;
  for (const Oddity& oddity : bar.oddities) ++counts[oddity.rule];
  for (const Oddity& oddity : bar.oddities) {
    const std::size_t count = std::exchange(counts[oddity.rule], 0);
    if (count == 0 || oddity.overall == Severity::Note) continue;
    const std::string text = textOf(bar, oddity);
    const bool isOfBar = oddity.value.element.piece == 0;
    texts.push_back((isOfBar ? "the bar" : "") + text +
                    (count == 1 ? "" : " (and " + std::to_string(count - 1) + " more)"));
  }
  return texts;
}

std::vector<std::string> findingLines(const std::vector<BarPlace>& bars, const Oddities& header) {
  std::vector<std::string> lines;
  for (const Oddity& oddity : header) lines.push_back(lineOf("the header", oddity.text, oddity));
  std::map<std::string, std::pair<std::string, std::size_t>> notes;
  for (const BarPlace& bar : bars) {
    for (const Oddity& oddity : bar.oddities) {
      const std::string comma = oddity.value.element.piece == 0 ? "" : ", ";
      const std::string line =
          lineOf("bar " + bar.bar->BarNumber + comma, textOf(bar, oddity), oddity);
      if (oddity.overall != Severity::Note) {
        lines.push_back(line);
      } else {
        ++notes.try_emplace(oddity.rule, line, 0).first->second.second;
      }
    }
  }
  for (const auto& [rule, note] : notes) {
    const auto& [line, count] = note;
    lines.push_back(count == 1 ? line : line + " and " + std::to_string(count - 1) + " more");
  }
  return lines;
}

std::string leftOutText(const std::vector<BarPlace>& bars) {
  std::set<std::tuple<int, int, int>> pieces;
  std::set<std::tuple<int, int, int>> works;
  for (const BarPlace& bar : bars) {
    for (const Oddity& oddity : bar.oddities) {
      if (oddity.drawn != Drawn::LeftOut) continue;
      const Element& element = oddity.value.element;
      (element.work == 0 ? pieces : works).insert({element.bar, element.piece, element.work});
    }
  }
  std::vector<std::string> texts;
  if (!pieces.empty()) texts.push_back(countText(pieces.size(), "piece"));
  if (!works.empty()) texts.push_back(countText(works.size(), "work"));
  return joined(texts, " and ");
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
        bar.isLengthKnown ? hundredthsText(bar.length) : bar.bar->length,
        bar.unknown == 0 ? hundredthsText(bar.used) : "",
        bar.isKnown() ? hundredthsText(bar.leftOver()) : "",
        bar.bar->BarLeftLength,
        yieldOf(bar).text(),
    };
    std::vector<Cell>& row = table.rows.emplace_back();
    for (const std::string& text : texts) row.push_back({text});
  }
  return table;
}

}  // namespace desk::draw
