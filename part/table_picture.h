// The picture of a table: what the operator sees on the panel.
#pragma once

#include <string>
#include <vector>

#include "host/part_types.h"

namespace Table {

using Row = std::vector<std::string>;  ///< the texts of one band, from the left, cleaned

/// Everything that a picture shows.
struct Content {
  tagRECT area = {0, 0, 0, 0};  ///< on the panel; only its size matters to the picture
  unsigned short rows = 0;      ///< body rows; the head band comes on top of them
  unsigned short cols = 0;
  std::vector<float> ratios;  ///< of the columns' widths; see `columnEdges`
  Row head;
  std::vector<Row> body;  ///< from the top
  int selectedRow = 0;    ///< counted from 1; 0: none

  /// Whether there is a grid at all: some pixels, rows and columns.
  bool hasGrid() const;
};

/// The SVG document of `content`, the same bytes for the same content.
///
/// Its origin is the area's top left corner. Without a grid it is an empty sheet of the area's
/// size. Texts and cells beyond the grid are not shown, missing ones leave their cells empty. Rows
/// too low for legible text show none, and grid lines that would run into each other are left out.
std::string drawTable(const Content& content);

}  // namespace Table
