// Which rows of a table a page is shown, and in which order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "desk/base/table.h"
#include "desk/job/source_text.h"

namespace desk::view {

/// What a page wishes.
struct Wish {
  std::string filter;                 ///< rows that hold it in a cell, without case; empty: all
  job::Element within;                ///< rows about it or a part of it; the header: all
  std::optional<std::size_t> column;  ///< to sort by; none: as they are
  bool isDown = false;                ///< the last one first

  bool operator==(const Wish& other) const {
    return filter == other.filter && within == other.within && column == other.column &&
           isDown == other.isDown;
  }
};

/// Takes the rows of a table one after the other and keeps no more of them than it sorts by.
class RowOrder {
 public:
  explicit RowOrder(const Wish& wish);

  void add(std::size_t row, const std::vector<Cell>& cells, const job::Element& element);

  /// Sorts what was added: numbers first, by value, then texts as people sort them, rows without a
  /// value last. Equal ones stay as they are.
  void sort();

  /// The rows that pass the filter, in order: their numbers in the table.
  std::size_t size() const { return rows_.size(); }
  std::size_t operator[](std::size_t place) const { return rows_[place].number; }

  /// The place of the first row that is about an element, else about a part of it, else about what
  /// holds it; none without such a row.
  std::optional<std::size_t> find(const job::Element& element) const;

 private:
  /// What is sorted by.
  struct Key {
    bool isNumber = false;
    double number = 0.0;
    std::string text;
  };
  struct Row {
    std::uint32_t number;
    std::uint32_t key;  ///< index of its key
    job::Element element;
  };

  bool passes(const std::vector<Cell>& cells, const job::Element& element) const;
  bool isBefore(const Key& a, const Key& b) const;

  Wish wish_;
  std::vector<Row> rows_;
  std::vector<Key> keys_;  ///< until they are sorted
};

}  // namespace desk::view
