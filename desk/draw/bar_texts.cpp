#include "desk/draw/bar_texts.h"

#include <algorithm>

#include "desk/base/text.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"

namespace desk::draw {

namespace {

constexpr double kBesideBar = 8.0;  ///< how far texts may reach beyond the bar's left end, mm
constexpr double kBetweenNames = 0.8;
constexpr double kLeader = 0.2;  ///< what a line to a text takes of the rows above it, mm

bool areAlike(const PiecePlace& one, const PiecePlace& other) {
  return one.isLengthKnown && other.isLengthKnown && one.piece->Length == other.piece->Length &&
         one.leftCut == other.leftCut && one.rightCut == other.rightCut && one.fits == other.fits;
}

bool areNext(const PiecePlace& one, const PiecePlace& other) {
  const std::string& number = one.piece->PieceNumber;
  return number == other.piece->PieceNumber || isNextNumber(other.piece->PieceNumber, number);
}

}  // namespace

bool TextRows::isFree(std::size_t row, double left, double right) const {
  const auto next = taken_[row].lower_bound(left);
  if (next != taken_[row].end() && next->first < right) return false;
  return next == taken_[row].begin() || std::prev(next)->second <= left;
}

BarTexts::BarTexts(const BarGroup& group, double along, double room)
    : group_(group), bar_(group.first()), along_(along), room_(room) {
  const std::size_t count = bar_.pieces.size();
  for (std::size_t i = 0; i < count; ++i) {
    const PiecePlace& piece = bar_.pieces[i];
    labels_.push_back(labelOf(piece, nameAt(i), group.barCodeAt(i), piece.length / along));
    addLabel(i, labels_.back());
  }
  std::vector<Run> runs = this->runs();
  for (Run& run : runs) {  // before sizes, which the list has too
    run.hasName = run.hasName || writeName(run, 0, TextRows::kBelow) ||
                  writeName(run, TextRows::kBelow, TextRows::kCount);
  }
  for (const Run& run : runs) {
    if (!writeSize(run)) entries_.push_back(entryOf(run));
  }
  std::stable_sort(placed_.begin(), placed_.end(),
                   [](const auto& one, const auto& other) { return one.piece < other.piece; });
}

void BarTexts::addLabel(std::size_t index, const PieceLabel& label) {
  const PiecePlace& piece = bar_.pieces[index];
  const double left = piece.start / along_;
  const double right = left + piece.length / along_;
  const double middle = (left + right) / 2.0;
  const auto writeAngle = [&](double x, double towards, const char* kind, const std::string& text) {
    if (text.empty()) return;
    const double width = widthInMm(text, kLabel);
    taken_.take(0, std::min(x, x + towards * width), std::max(x, x + towards * width));
    placed_.push_back({index, x, 0, kind, text});
  };
  writeAngle(left + kBetweenLabels / 2.0, 1.0, "left", label.leftAngle);
  if (!label.number.empty()) {
    write(index, middle, widthInMm(label.number, kNumber), 0, "number", label.number);
  }
  writeAngle(right - kBetweenLabels / 2.0, -1.0, "right", label.rightAngle);
  if (!label.length.empty()) {
    write(index, middle, widthInMm(label.length, kLabel), 1, "middle", label.length);
  }
  if (!label.barCode.empty()) {
    write(index, middle, widthInMm(label.barCode, kLabel), 2, "middle", label.barCode);
  }
}

/// What is not written whole at its pieces.
std::vector<BarTexts::Run> BarTexts::runs() const {
  const auto isTiny = [&](std::size_t at) {
    return labels_[at].number.empty() && labels_[at].length.empty();
  };
  const std::vector<PiecePlace>& pieces = bar_.pieces;
  std::vector<Run> runs;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (labels_[i].isWhole) continue;
    const std::size_t first = i;
    while (isTiny(i) && i + 1 < pieces.size() && isTiny(i + 1) &&
           areAlike(pieces[i], pieces[i + 1]) && areNext(pieces[i], pieces[i + 1])) {
      ++i;
    }
    const double end = pieces[i].start + pieces[i].length;
    Run run{first, i, (pieces[first].start + end) / 2.0 / along_};
    run.hasName = !labels_[first].number.empty();
    runs.push_back(run);
  }
  return runs;
}

/// Writes the name into the first of these rows that has room, if a line can lead there.
bool BarTexts::writeName(Run& run, std::size_t from, std::size_t to) {
  const std::string name = nameOf(run);
  const double width = widthInMm(name, kNumber) + kBetweenNames;
  for (run.row = from; run.row < to; ++run.row) {
    if (hasRoom(run.row, run.middle, width)) {
      for (std::size_t passed = from; passed < run.row; ++passed) {
        taken_.take(passed, run.middle - kLeader / 2.0, run.middle + kLeader / 2.0);
      }
      write(run.first, run.middle, width, run.row, "number", name, run.row > from);
      return true;
    }
    if (!hasRoom(run.row, run.middle, kLeader)) return false;
  }
  return false;
}

/// Writes the size below the name. Returns whether all is said then.
bool BarTexts::writeSize(const Run& run) {
  const PiecePlace& piece = bar_.pieces[run.first];
  if (!run.hasName || !labels_[run.first].number.empty()) return false;
  const std::string size = sizeOf(run);
  const double width = widthInMm(size, kLabel) + kBetweenLabels;
  if (run.row + 1 >= TextRows::kBelow || !hasRoom(run.row + 1, run.middle, width)) return false;
  write(run.first, run.middle, width, run.row + 1, "middle", size);
  return anglesText(piece).empty() && group_.barCodeAt(run.first).empty() &&
         group_.barCodeAt(run.last).empty();
}

std::string BarTexts::nameAt(std::size_t index) const {
  return pieceName(*bar_.bar, static_cast<int>(index) + 1);
}

std::string BarTexts::nameOf(const Run& run) const {
  const std::string first = nameAt(run.first);
  const std::string last = nameAt(run.last);
  return xmlText(first == last ? first : first + "-" + last);
}

std::string BarTexts::sizeOf(const Run& run) const {
  const PiecePlace& piece = bar_.pieces[run.first];
  std::string length = piece.length > 0.0 ? xmlText(lengthText(piece)) : "no length";
  if (run.first == run.last) return length;
  return std::to_string(run.last - run.first + 1) + " x " + length;
}

std::string BarTexts::entryOf(const Run& run) const {
  const std::string first = group_.barCodeAt(run.first);
  const std::string last = group_.barCodeAt(run.last);
  std::string entry = nameOf(run) + ": " + sizeOf(run) + anglesText(bar_.pieces[run.first]);
  if (!first.empty()) entry += ", " + xmlText(first);
  if (run.first != run.last && !last.empty() && last != first) entry += " … " + xmlText(last);
  return entry;
}

bool BarTexts::hasRoom(std::size_t row, double x, double width) const {
  return x - width / 2.0 >= -kBesideBar && x + width / 2.0 <= room_ &&
         taken_.isFree(row, x - width / 2.0, x + width / 2.0);
}

void BarTexts::write(std::size_t piece, double x, double width, std::size_t row, const char* kind,
                     const std::string& text, bool isLed) {
  taken_.take(row, x - width / 2.0, x + width / 2.0);
  placed_.push_back({piece, x, row, kind, text, isLed});
  if (row < TextRows::kBelow) {
    rowsBelow_ = std::max(rowsBelow_, row + 1);
  } else {
    rowsAbove_ = std::max(rowsAbove_, row + 1 - TextRows::kBelow);
  }
}

}  // namespace desk::draw
