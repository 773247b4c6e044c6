// Where the bands and the columns of a table lie, in whole pixels from the top left corner of its
// picture.
//
// A band is the head or one body row; all bands are equally high, give or take the pixel that does
// not divide. Every edge comes from a running sum, so neighbours share their edge, nothing is lost
// or counted twice, and the last edge is the full extent. Any argument is safe up to INT_MAX
// pixels; a band may have no height when there are more bands than pixels.
#pragma once

#include <vector>

namespace Table {

/// Pixels from `from` up to `to`: 0 when `to` does not lie beyond `from`, INT_MAX when the distance
/// exceeds it.
int extent(int from, int to);

/// Upper edge of band `index` of `bands` on `height` pixels; `index` == `bands` gives `height`.
int bandEdge(int height, int bands, int index);

/// The band that shows pixel row `y`. Needs 0 <= y < height.
int bandAt(int height, int bands, int y);

/// The `columns` + 1 edges of the columns on `width` pixels, from 0 to `width`, never falling.
/// Columns share the width by their ratios. They are equally wide when the number of ratios is not
/// `columns`, a ratio is negative, or their sum is not finite and positive.
std::vector<int> columnEdges(int width, int columns, const std::vector<float>& ratios);

}  // namespace Table
