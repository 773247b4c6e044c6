#include "desk/draw/job_drawing.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/summary.h"
#include "desk/draw/svg_canvas.h"
#include "desk/job/yield.h"

namespace desk::draw {

namespace {

constexpr double kLegendTop = kMargin + 14.0;

bool isMetric(const std::string& unit) {
  return unit.empty() || unit == "mm";
}

bool showsStated(const BarPlace& bar) {
  return yieldOf(bar).length > 0.0 && !statedLeftOver(bar).empty();
}

}  // namespace

JobDrawing::JobDrawing(JobHeading heading, const std::vector<BarPlace>& bars, EqualBars equal)
    : heading_(std::move(heading)),
      bars_(bars),
      groups_(groupsOf(bars, equal)),
      marks_(groups_),
      legend_(marks_, kRoom),
      scale_(scaleFor(bars)) {
  for (const BarGroup& group : groups_) pictures_.emplace_back(group, scale_, marks_);
}

std::string JobDrawing::group(std::size_t index) const {
  SvgCanvas canvas(SvgCanvas::For::Page, width(), heightOf(index), titleOf(index));
  pictures_[index].draw(canvas, 0.0);
  return canvas.finish();
}

std::string JobDrawing::legend() const {
  if (legend_.height() == 0.0) return "";
  SvgCanvas canvas(SvgCanvas::For::Page, width(), legend_.height() + 2.0, title());
  legend_.draw(canvas, 4.0);
  return canvas.finish();
}

Picture JobDrawing::sheets() const {
  std::vector<double> heights;
  for (const BarPicture& picture : pictures_) heights.push_back(picture.height());
  const double top = kLegendTop + legend_.height() + 2.0;
  const Pages pages = paginate(heights, top);

  SvgCanvas canvas(SvgCanvas::For::Paper, kPageWidth, pages.height, title());
  canvas.rectangle(0.0, 0.0, kPageWidth, pages.height, "paper");
  for (int page = 0; page < pages.count; ++page) drawHeading(canvas, page, pages.count);
  if (bars_.empty()) canvas.text({kMargin, top}, "The job has no bars.", "remark");
  for (std::size_t i = 0; i < pictures_.size(); ++i) pictures_[i].draw(canvas, pages.tops[i]);
  return {canvas.finish(), pages.height};
}

std::string JobDrawing::title() const {
  return heading_.name.empty() ? heading_.source : heading_.name;
}

std::string JobDrawing::facts() const {
  std::string facts = heading_.source + "  ·  " + totalText(bars_) + "  ·  ";
  if (isMetric(heading_.unit) && !bars_.empty()) facts += scaleText(scale_) + ", ";
  facts += "lengths in " + (heading_.unit.empty() ? "mm" : heading_.unit);
  if (std::any_of(bars_.begin(), bars_.end(), showsStated)) {
    facts += "  ·  in brackets: left over as the job says";
  }
  return xmlText(facts);
}

void JobDrawing::drawHeading(SvgCanvas& canvas, int page, int count) const {
  const double top = page * kPageHeight;
  canvas.text({kMargin, top + kMargin + 4.0}, truncatedToMm(xmlText(title()), 0.8 * kRoom, kName),
              "name");
  canvas.text({kMargin, top + kMargin + 9.0}, truncatedToMm(facts(), kRoom, kLabel), "facts");
  legend_.draw(canvas, top + kLegendTop);
  if (count == 1) return;
  canvas.text({kPageWidth - kMargin, top + kMargin + 2.0},
              "page " + std::to_string(page + 1) + " of " + std::to_string(count), "page");
}

}  // namespace desk::draw
