#include "desk/draw/bar_groups.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

#include "desk/base/text.h"
#include "desk/draw/summary.h"
#include "desk/job/yield.h"

namespace desk::draw {

namespace {

/// Texts and numbers one behind the other; only the same ones give the same key.
class Key {
 public:
  explicit Key(const BarPlace& place) {
    const BAR_T& bar = *place.bar;
    for (const std::string* text :
         {&bar.BarName, &bar.DXF_Name, &bar.BarColor, &bar.MaxY, &bar.MaxZ, &bar.length}) {
      add(*text);
    }
    add(statedLeftOver(place));
    for (const std::string& remark : remarkTexts(place)) add(remark);
    for (const PIECE_T& piece : bar.piece) add(piece);
  }

  const std::string& text() const { return text_; }

 private:
  void add(const std::string& text) { text_ += std::to_string(text.size()) + ":" + text; }

  void add(double number) { text_.append(reinterpret_cast<const char*>(&number), sizeof number); }

  void add(const PIECE_T& piece) {
    for (const std::string* text : {&piece.PieceNumber, &piece.Length, &piece.sxB, &piece.dxB}) {
      add(*text);
    }
    text_ += std::to_string(piece.work.size()) + ";";
    for (const WORK_T& work : piece.work) {
      add(work.Name);
      for (const double number : {work.ProfiLav, work.PositionX, work.PositionY, work.PositionZ}) {
        add(number);
      }
    }
  }

  std::string text_;
};

}  // namespace

bool isNextNumber(const std::string& text, const std::string& before) {
  constexpr std::size_t kMostDigits = 9;
  const bool isNumber = !before.empty() && before.size() <= kMostDigits &&
                        before.find_first_not_of("0123456789") == std::string::npos;
  return isNumber && text == std::to_string(std::strtol(before.c_str(), nullptr, 10) + 1);
}

std::string BarGroup::name() const {
  return joined(numbers(), ", ");
}

std::vector<std::string> BarGroup::numbers() const {
  std::vector<std::string> runs;
  bool isOne = true;
  for (std::size_t from = 0, to = 0; from < bars.size(); from = to) {
    const auto numberAt = [&](std::size_t at) -> const std::string& {
      return bars[at]->bar->BarNumber;
    };
    to = from + 1;
    while (to < bars.size() && isNextNumber(numberAt(to), numberAt(to - 1))) ++to;
    if (to - from == 2) --to;  // "1, 2" is no longer than "1-2"
    const std::string first = numberAt(from).empty() ? "?" : numberAt(from);
    if (to - from > 1) {
      isOne = false;
      runs.push_back(first + "-" + numberAt(to - 1));
    } else if (runs.empty() || runs.back() != first) {
      runs.push_back(first);
    }
  }
  runs.front().insert(0, isOne && runs.size() == 1 ? "Bar " : "Bars ");
  return runs;
}

std::string BarGroup::count() const {
  return bars.size() == 1 ? "" : std::to_string(bars.size()) + " x  ";
}

bool BarGroup::barCodesDifferAt(std::size_t piece) const {
  const auto codeOf = [&](const BarPlace& bar) -> const std::string& {
    return bar.pieces[piece].piece->BarCode;
  };
  return std::any_of(bars.begin(), bars.end(),
                     [&](const BarPlace* bar) { return codeOf(*bar) != codeOf(first()); });
}

std::string BarGroup::barCodeAt(std::size_t piece) const {
  return barCodesDifferAt(piece) ? "" : first().pieces[piece].piece->BarCode;
}

std::vector<BarGroup> groupsOf(const std::vector<BarPlace>& bars, EqualBars equal) {
  std::vector<BarGroup> groups;
  std::unordered_map<std::string, std::size_t> known;
  for (const BarPlace& bar : bars) {
    std::size_t at = groups.size();
    if (equal == EqualBars::Once) at = known.try_emplace(Key(bar).text(), at).first->second;
    if (at == groups.size()) groups.emplace_back();
    groups[at].bars.push_back(&bar);
  }
  return groups;
}

}  // namespace desk::draw
