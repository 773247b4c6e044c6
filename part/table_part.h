// The screen part: a table that shows a long list one page at a time, lets the operator page and
// pick a row, and tells the panel when to fetch a new picture.
//
// The panel creates, initialises and destroys it through the part callbacks. Around them it sets
// the grid (`SetCell`), tells the number of rows and learns which of them to fetch (`Update`), and
// hands them over (`SetBodyText`). All calls come on the panel's screen thread. Failures are result
// values and leave the part as it was.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "host/part_types.h"
#include "part/svg_table.h"

// --- names, fields and signatures fixed by the host ----------------------------------------------

class CLuaParseModulePart : public CSVGLuaParseModule {
 public:
  CLuaParseModulePart();

  /// Sets the eight fields from `nOrder` to `nLastRow` to what they hold after construction.
  void InitLogic();

  /// Back to the constructed paging state and an empty table, with one redraw. Keeps the rectangle
  /// and the throttle's clock.
  /// @return 1
  int Reset();

  /// Sets the rows of a page, the columns and their widths, and asks for a redraw. The page, the
  /// page count and the shown range stay until `Update` hears of another number of rows.
  /// @param widths one digit for each column with ':' between them, such as "2:1:1", one ':' more
  ///               at the end allowed; empty: equal widths. Digits are weights: the share of a
  ///               column is its weight by their sum. All zeros give equal widths as well.
  /// @return 1; 0 for null, any other text, or another number of weights than `cols`
  int SetCell(unsigned short rows, unsigned short cols, char const* widths);

  /// Shows these rows, in reverse when `nOrder` is 1: then the caller's list itself is reversed.
  /// The rows stay the caller's; their texts are copied.
  /// @return what `Refresh` returned; the rows are taken either way
  int SetBodyText(std::list<std::vector<std::string>*>& rows);

  /// Takes the number of rows and tells which of them the current page shows, counted from 1.
  /// A current page that no longer exists becomes the last one.
  ///
  /// Kept: pages are counted anew only when `total` changes. After a `SetCell` with other rows the
  /// same total goes with the old page count.
  /// @param first, last set to the range; untouched when `nOrder` is neither 0 nor 1
  /// @return 1; 0 when there are no rows or `SetCell` has not set the rows of a page
  int Update(unsigned short total, int& first, int& last);

  /// One page back. @return 1; 0 on the first page
  int PageUp();

  /// One page on. @return 1; 0 on the last page
  int PageDown();

  /// The current page, counted from 1, and the number of pages.
  void GetPage(unsigned short& cur, unsigned short& count);

  /// Sets `index` to the number of the selected row in the whole list, counted from 1.
  /// Kept: a selection outside the shown range leaves `index` untouched and still gives 1.
  /// @return 1; 0 when no row is selected
  int GetIndex(int& index);

  /// Asks for a redraw, at most once in 100 ms by the panel's clock.
  /// @return 1; 0 when the last accepted request is less than 100 ms old
  int Refresh();

  /// Takes the part's rectangle. @param info a tagPARTINFO. @return 0; -1 for null
  int onInit(void* info);

  /// A click on a body row selects it and asks for a redraw. Other click types do nothing.
  /// @return 0
  int onClick(int, tagCLICKPARTTYPE type, tagPOINT const& pt, void*);

  /// The panel's question whether to fetch a new picture. @return 0: yes, once; -1: no
  int onPLCRead(void*);

  /// Sets `svg` to the current picture. @return 0
  int onFillPartShowAttr(std::string& svg, void*);

  std::uint16_t nOrder;      ///< a setting: 0 first row at the top, 1 last row at the top
  std::uint16_t nCols;       ///< set by `SetCell`
  std::uint16_t nPageRows;   ///< set by `SetCell`
  std::uint16_t nTotalRows;  ///< last given to `Update`
  std::uint16_t nPageCount;
  std::uint16_t nCurPage;          ///< counted from 1
  std::int32_t nFirstRow;          ///< counted from 1; -1 before the first `Update`
  std::int32_t nLastRow;           ///< counted from 1; -1 before the first `Update`
  std::uint64_t nLastRefreshTick;  ///< of the last accepted refresh, in milliseconds
  std::int32_t bRedraw;            ///< 1 until the panel has been told to fetch a new picture
};
