// Tables that commands print, and the forms they are printed in.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <vector>

#include "desk/base/terminal.h"

namespace desk {

/// Where the value of a cell was read in a file.
struct Source {
  int line = 0;          ///< from 1; 0: the value stands in no file
  int column = 0;        ///< from 1, in characters; 0 when only the line is known
  bool carried = false;  ///< it was read for another element and stayed
  std::string element;   ///< the element that it was read for
};

/// One value of a table.
struct Cell {
  std::string text;  ///< as the script gets it; of a number the shortest text
  bool isNumber = false;
  double number = 0.0;
  Source origin{};
};

/// A measure or a count, to hundredths.
Cell numberCell(double number);

/// Rows of cells under the keys that scripts know them by.
struct TextTable {
  std::vector<std::string> keys;
  std::vector<std::vector<Cell>> rows;  ///< each as long as `keys`
};

/// What becomes of rows that are too wide for a terminal.
enum class TooWide {
  Cut,    ///< the widest columns are cut; where that leaves too little of them, as Folded
  Folded  ///< each value has a line of its own, folded at blanks
};

/// Which columns hold numbers: those with nothing but texts that are numbers, and at least one.
class NumberColumns {
 public:
  /// @param count of the columns
  explicit NumberColumns(std::size_t count) : hasNumber_(count), hasText_(count) {}

  void add(const std::vector<Cell>& row);
  bool has(std::size_t column) const { return hasNumber_[column] && !hasText_[column]; }

 private:
  std::vector<bool> hasNumber_;
  std::vector<bool> hasText_;
};

/// Aligned columns under a heading.
/// @param where adds to each value the line that it was read from, with a "*" for a carried one
std::string tableText(const TextTable& table, bool where, const Terminal& terminal,
                      TooWide tooWide = TooWide::Cut);

/// One row of it, a line for each value, folded at blanks on a terminal.
std::string recordText(const TextTable& table, std::size_t row, bool where,
                       const Terminal& terminal);

/// Comma-separated values (RFC 4180) with a heading. `where` adds two columns for each key.
std::string csvText(const TextTable& table, bool where);

/// An array of objects. `where` makes an object of each value.
std::string jsonText(const TextTable& table, bool where);

/// Where a value was read: "line", "column", "carried", "element"; null for what stands in no file.
Json::Value originValue(const Source& origin);

/// The same as a value. The members stand in the order of the keys, for jsonDocument().
Json::Value jsonRows(const TextTable& table, bool where);
Json::Value jsonRow(const TextTable& table, std::size_t row, bool where);

}  // namespace desk
