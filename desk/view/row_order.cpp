#include "desk/view/row_order.h"

#include <algorithm>
#include <array>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/view/query.h"

namespace desk::view {

namespace {

/// How well a row about `one` answers for `wanted`: 0 best, 2 worst; more: not at all.
std::size_t distance(const job::Element& one, const job::Element& wanted) {
  if (one == wanted) return 0;
  if (one.bar > 0 && isIn(one, wanted)) return 1;
  return one.bar > 0 && isIn(wanted, one) ? 2 : 3;
}

}  // namespace

RowOrder::RowOrder(const Wish& wish) : wish_(wish) {
  wish_.filter = withoutCase(wish.filter);
}

bool RowOrder::passes(const std::vector<Cell>& cells, const job::Element& element) const {
  if (wish_.within.bar > 0 && !isIn(element, wish_.within)) return false;
  return wish_.filter.empty() || std::any_of(cells.begin(), cells.end(), [&](const Cell& cell) {
           return withoutCase(cell.text).find(wish_.filter) != std::string::npos;
         });
}

void RowOrder::add(std::size_t row, const std::vector<Cell>& cells, const job::Element& element) {
  if (!passes(cells, element)) return;
  rows_.push_back(
      {static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(keys_.size()), element});
  if (!wish_.column) return;
  Key& key = keys_.emplace_back();
  key.text = cells[*wish_.column].text;
  bool isWhole = false;
  key.isNumber = numberOf(key.text, key.number, isWhole) && isWhole;
}

bool RowOrder::isBefore(const Key& a, const Key& b) const {
  if (a.text.empty() || b.text.empty()) return !a.text.empty() && b.text.empty();
  const Key& first = wish_.isDown ? b : a;
  const Key& second = wish_.isDown ? a : b;
  if (first.isNumber != second.isNumber) return first.isNumber;
  return first.isNumber ? first.number < second.number
                        : comparedByPeople(first.text, second.text) < 0;
}

void RowOrder::sort() {
  if (!wish_.column) return;
  std::stable_sort(rows_.begin(), rows_.end(), [&](const Row& a, const Row& b) {
    return isBefore(keys_[a.key], keys_[b.key]);
  });
  keys_ = {};
}

std::optional<std::size_t> RowOrder::find(const job::Element& element) const {
  std::array<std::size_t, 4> first;
  first.fill(rows_.size());
  for (std::size_t i = rows_.size(); i-- > 0;) first[distance(rows_[i].element, element)] = i;
  for (std::size_t i = 0; i < 3; ++i) {
    if (first[i] < rows_.size()) return first[i];
  }
  return std::nullopt;
}

}  // namespace desk::view
