// The SVG table renderer: a head band and a grid of body rows, hit tests and a selected row.
//
// It keeps what it is given and builds the picture when it is asked for one. All calls come on the
// panel's screen thread. No call fails; only memory can run out, and then the call that met it
// leaves the table as it was.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "host/part_types.h"
#include "part/table_picture.h"

// --- names fixed by the host ---------------------------------------------------------------------

class CSVGLuaParseModule {
 public:
  /// An empty table on an empty rectangle.
  CSVGLuaParseModule();
  virtual ~CSVGLuaParseModule();
  CSVGLuaParseModule(const CSVGLuaParseModule&) = delete;
  CSVGLuaParseModule& operator=(const CSVGLuaParseModule&) = delete;

  /// Where the table lies on the panel, in panel pixels. The picture has the rectangle's size and
  /// starts at 0,0; clicks come in panel pixels. An empty or inverted rectangle shows nothing.
  void SetSvgRect(tagRECT area);

  /// The size of the grid, and the share of the width that each column takes. Ratios need not add
  /// up to 1; without usable ones, one for each column, all columns are equally wide. The height is
  /// shared equally by the head band and the body rows, whether or not they hold texts.
  /// Keeps the texts and clears the selection.
  void SetCell(unsigned short rows, unsigned short cols, const std::vector<float>& ratios);

  /// The texts of the head band, from the left. They are copied.
  void DrawHeadText(const std::vector<std::string>& titles);

  /// The texts of the body: the n-th entry is the n-th row from the top. They are copied, the
  /// caller keeps list and rows, and a null row is an empty one. Rows and cells beyond the grid are
  /// kept for a later, larger grid. Keeps the selection.
  void DrawBodyText(std::list<std::vector<std::string>*>& rows);

  /// Selects the body row at `point`, which is in panel pixels like the rectangle. A row takes hits
  /// whether or not it holds texts; its left and top edges belong to it, the others do not.
  /// @return whether a body row was hit; a miss keeps the selection
  bool Click(const tagPOINT& point);

  /// The selected body row, counted from 1 from the top; 0 when there is none.
  int GetSelectedRow() const;

  /// Sets `svg` to the current picture, an SVG document in UTF-8.
  void GetSVGXml(std::string& svg) const;

  /// Clears the grid, all texts and the selection; keeps the rectangle.
  void Reset();

 private:
  Table::Content content_;
};
