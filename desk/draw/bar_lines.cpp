#include "desk/draw/bar_lines.h"

#include <algorithm>

#include "desk/base/text.h"
#include "desk/draw/piece_label.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"

namespace desk::draw {

namespace {

constexpr std::size_t kMostLines = 12;

/// The list while it grows; what comes behind its last line is not looked at.
class List {
 public:
  explicit List(const BarGroup& group) : group_(group) {}

  void add(const std::vector<std::string>& entries) {
    if (lines_.size() > kMostLines) return;
    const std::vector<std::string> more = linesOf(entries, kRoom, kMostLines + 1);
    lines_.insert(lines_.end(), more.begin(), more.end());
  }

  void addSignsWithoutRoom(const std::vector<Sign>& signs) {
    const std::vector<PiecePlace>& pieces = group_.first().pieces;
    std::vector<std::string> entries;
    auto sign = signs.begin();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      const std::vector<WorkPlace>& works = pieces[i].works;
      auto missing = std::count_if(works.begin(), works.end(),
                                   [](const WorkPlace& work) { return work.isDrawn(); });
      for (; sign != signs.end() && sign->piece == i; ++sign) --missing;
      if (missing == 0) continue;
      entries.push_back(nameOf(i) + ": " + countText(static_cast<std::size_t>(missing), "work") +
                        " without room for a sign");
    }
    add(entries);
  }

  /// Adds those that differ from bar to bar, behind the numbers of their pieces.
  void addBarCodes() {
    std::vector<std::size_t> pieces;
    for (std::size_t i = 0; i < group_.first().pieces.size(); ++i) {
      if (group_.barCodesDifferAt(i)) pieces.push_back(i);
    }
    for (const BarPlace* bar : group_.bars) {
      if (pieces.empty() || lines_.size() > kMostLines) return;
      std::vector<std::string> codes;
      for (const std::size_t i : pieces) {
        const std::string code = xmlText(bar->pieces[i].piece->BarCode);
        codes.push_back(nameOf(i) + ": " + (code.empty() ? "none" : code));
      }
      codes.front().insert(0, "Bar " + xmlText(bar->bar->BarNumber) + ":  ");
      add(codes);
    }
  }

  std::vector<std::string> take() {
    if (lines_.size() > kMostLines) {
      lines_.resize(kMostLines);
      lines_.back() = "and more; \"cusdesk show\" lists them all";
    }
    return std::move(lines_);
  }

 private:
  std::string nameOf(std::size_t index) const {
    return xmlText(pieceName(*group_.first().bar, static_cast<int>(index) + 1));
  }

  const BarGroup& group_;
  std::vector<std::string> lines_;
};

}  // namespace

BarLines linesBelow(const BarGroup& group, const std::vector<std::string>& how,
                    const std::vector<std::string>& entries, const std::vector<Sign>& signs) {
  List list(group);
  list.add(how);
  list.add(entries);
  list.addSignsWithoutRoom(signs);
  list.addBarCodes();
  BarLines lines{list.take(), {}};
  for (const std::string& text : remarkTexts(group.first())) {
    lines.remarks.push_back(truncatedToMm(xmlText(text), kRoom, kRemark));
  }
  return lines;
}

}  // namespace desk::draw
