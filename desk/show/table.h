// What cusdesk show prints: rows of cells under the keys that scripts know them by.
#pragma once

#include <string>
#include <vector>

namespace desk::show {

/// Where the value of a cell was read in the job file.
struct Source {
  int line = 0;          ///< from 1; 0: the value stands in no file
  int column = 0;        ///< from 1, in characters; 0 when only the line is known
  bool carried = false;  ///< it was read for another element and stayed
  std::string element;   ///< the element that it was read for
};

struct Cell {
  std::string text;  ///< as the script gets it; of a number the shortest text
  bool isNumber = false;
  double number = 0.0;
  Source origin{};
};

struct Table {
  std::vector<std::string> keys;
  std::vector<std::vector<Cell>> rows;  ///< each as long as `keys`
};

enum class Subject { Bars, Works, Cuts, Holes, Labels, Dimensions };

/// What is asked.
struct Question {
  Subject subject;
  std::string barCode;  ///< empty: of all pieces
  std::string bar;      ///< number; empty: of all bars
};

}  // namespace desk::show
