#include "desk/draw/work_marks.h"

#include <iterator>

namespace desk::draw {

namespace {

/// Shapes that fill a square of kSign, as path data that starts at their middle.
constexpr const char* kShapes[] = {
    "m-.75 0a.75.75 0 1 0 1.5 0a.75.75 0 1 0 -1.5 0z",              // disc
    "m-.65 -.65h1.3v1.3h-1.3z",                                     // square
    "m0 -.8l.8 1.45h-1.6z",                                         // triangle
    "m0 -.82l.7 .82l-.7 .82l-.7 -.82z",                             // diamond
    "m0 .8l.8 -1.45h-1.6z",                                         // triangle upside down
    "m-.27 -.8h.54v.53h.53v.54h-.53v.53h-.54v-.53h-.53v-.54h.53z",  // cross
};
constexpr char kOther[] = "w other";
constexpr std::size_t kColours = 5;  ///< classes w0 to w4 of the style sheet
constexpr std::size_t kSigns = std::size(kShapes) * kColours;

}  // namespace

WorkMarks::WorkMarks(const std::vector<BarGroup>& groups) {
  for (const BarGroup& group : groups) {
    for (const PiecePlace& piece : group.first().pieces) {
      for (const WorkPlace& place : piece.works) {
        const std::string& name = place.work->Name;
        if (!place.isDrawn()) continue;
        if (!signs_.emplace(name, signs_.size()).second) continue;
        if (signs_.size() <= kSigns) {
          names_.push_back(name);
        } else {
          ++others_;
        }
      }
    }
  }
}

void WorkMarks::drawOther(SvgCanvas& canvas, const Point& at) const {
  canvas.path(at, kShapes[0], kOther);
}

void WorkMarks::draw(SvgCanvas& canvas, const Point& at, const std::string& name,
                     const Subject* work) const {
  const auto found = signs_.find(name);
  const std::size_t sign = found == signs_.end() ? kSigns : found->second;
  if (sign >= kSigns) return canvas.path(at, kShapes[0], kOther, work);
  // 6 and 5 are coprime, so each pair of shape and colour occurs once.
  canvas.path(at, kShapes[sign % std::size(kShapes)], "w w" + std::to_string(sign % kColours),
              work);
}

}  // namespace desk::draw
