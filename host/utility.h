// The panel runtime's tick clock and SVG document builder.
#pragma once

#include <string>

#include "host/part_types.h"

// --- names fixed by the host ---------------------------------------------------------------------

namespace UTILITY {

/// The runtime's tick clock.
class CTime {
 public:
  /// The one clock of the process. Owned by the runtime, never null.
  static CTime* get_instance();

  /// Milliseconds since a moment that the runtime chooses. The plug-in only compares differences.
  unsigned long long getTickCount();
};

/// Builds one SVG document, element by element, in painting order.
///
/// Lengths are panel pixels from the top left corner of the picture, colours are "#rrggbb". Texts
/// are plain UTF-8: escaping is the builder's, which also replaces what no XML document may hold.
/// Elements that reach out of the picture are allowed and clipped by the viewer.
class CSVGCreator {
 public:
  /// An empty picture without extent.
  CSVGCreator();
  ~CSVGCreator();
  CSVGCreator(const CSVGCreator&) = delete;
  CSVGCreator& operator=(const CSVGCreator&) = delete;

  /// Starts a new picture of this size and forgets the one before. Negative lengths count as 0.
  void begin(int width, int height);

  /// A filled rectangle without an outline. An empty or inverted area adds nothing.
  void rectangle(const tagRECT& area, const char* fill);

  /// A straight line, one pixel wide. A horizontal one fills the pixels right of `from`.x up to
  /// `to`.x in pixel row `from`.y, a vertical one likewise downwards.
  void line(const tagPOINT& from, const tagPOINT& to, const char* stroke);

  /// One line of text in the panel's sans-serif face that starts at `at.x` and whose middle height
  /// lies at `at.y`. `fontSize` is the height of the em square. Runs of blanks show as one.
  void text(const tagPOINT& at, const std::string& text, int fontSize, const char* fill, bool bold);

  /// The finished document, in UTF-8. From then on only `begin` changes the builder's picture.
  std::string getXml();

 private:
  struct Drawing;
  Drawing* drawing_;  ///< owned, never null
};

}  // namespace UTILITY
