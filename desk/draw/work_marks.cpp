#include "desk/draw/work_marks.h"

#include <iterator>

namespace desk::draw {

namespace {

/// Shapes about 1.3 mm across, as path data that starts at their middle.
constexpr const char* kShapes[] = {
    "m-.6 0a.6.6 0 1 0 1.2 0a.6.6 0 1 0 -1.2 0z",       // disc
    "m-.55 -.55h1.1v1.1h-1.1z",                         // square
    "m0 -.7l.7 1.2h-1.4z",                              // triangle
    "m0 -.8l.7 .8l-.7 .8l-.7 -.8z",                     // diamond
    "m0 .7l.7 -1.2h-1.4z",                              // triangle upside down
    "m-.2 -.7h.4v.5h.5v.4h-.5v.5h-.4v-.5h-.5v-.4h.5z",  // cross
};
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

void WorkMarks::draw(SvgCanvas& canvas, const Point& at, const std::string& name) const {
  draw(canvas, at, name, nullptr);
}

void WorkMarks::draw(SvgCanvas& canvas, const Point& at, const std::string& name,
                     const Subject& work) const {
  draw(canvas, at, name, &work);
}

void WorkMarks::draw(SvgCanvas& canvas, const Point& at, const std::string& name,
                     const Subject* work) const {
  const auto found = signs_.find(name);
  const std::size_t sign = found == signs_.end() ? kSigns : found->second;
  if (sign >= kSigns) return canvas.path(at, kShapes[0], "w other", work);
  // 6 and 5 are coprime, so each pair of shape and colour occurs once.
  canvas.path(at, kShapes[sign % std::size(kShapes)], "w w" + std::to_string(sign % kColours),
              work);
}

}  // namespace desk::draw
