#include "desk/draw/job_drawing.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/summary.h"
#include "desk/draw/svg_canvas.h"
#include "desk/job/yield.h"

namespace desk::draw {

namespace {

constexpr double kDrawingWidth = kPageWidth - 2.0 * kMargin;
constexpr double kContinued = 16.0;  ///< where the bars of later pages begin

bool isMetric(const std::string& unit) {
  return unit.empty() || unit == "mm";
}

std::string scaleText(const Scale& scale) {
  if (scale.along == scale.across) return "1:" + hundredthsText(scale.along);
  return "1:" + hundredthsText(scale.along) + " along, 1:" + hundredthsText(scale.across) +
         " across";
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
      legend_(marks_, kDrawingWidth),
      scale_(scaleFor(bars, kDrawingWidth)) {
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
  const double legendTop = kMargin + 14.0;
  const double first = legendTop + legend_.height() + 2.0;
  const Pages pages = paginate(heights, first, kContinued);

  SvgCanvas canvas(SvgCanvas::For::Paper, kPageWidth, pages.height, title());
  canvas.rectangle(0.0, 0.0, kPageWidth, pages.height, "paper");
  drawHeading(canvas);
  legend_.draw(canvas, legendTop);
  if (bars_.empty()) canvas.text({kMargin, first}, "The job has no bars.", "remark");
  for (std::size_t i = 0; i < pictures_.size(); ++i) pictures_[i].draw(canvas, pages.tops[i]);
  drawPageNumbers(canvas, pages.count);
  return {canvas.finish(), pages.height};
}

std::string JobDrawing::title() const {
  return heading_.name.empty() ? heading_.source : heading_.name;
}

std::string JobDrawing::shortTitle() const {
  return truncatedToMm(xmlText(title()), 0.8 * kDrawingWidth, kName);
}

void JobDrawing::drawHeading(SvgCanvas& canvas) const {
  canvas.text({kMargin, kMargin + 4.0}, shortTitle(), "name");
  std::string facts = heading_.source + "  ·  " + totalText(bars_) + "  ·  ";
  if (isMetric(heading_.unit) && !bars_.empty()) facts += scaleText(scale_) + ", ";
  facts += "lengths in " + (heading_.unit.empty() ? "mm" : heading_.unit);
  if (std::any_of(bars_.begin(), bars_.end(), showsStated)) {
    facts += "  ·  in brackets: left over as the job says";
  }
  canvas.text({kMargin, kMargin + 9.0}, truncatedToMm(xmlText(facts), kDrawingWidth, kLabel),
              "facts");
}

void JobDrawing::drawPageNumbers(SvgCanvas& canvas, int count) const {
  for (int page = 0; count > 1 && page < count; ++page) {
    const double baseline = page * kPageHeight + kMargin + 2.0;
    if (page > 0) canvas.text({kMargin, baseline}, shortTitle(), "continued");
    canvas.text({kPageWidth - kMargin, baseline},
                "page " + std::to_string(page + 1) + " of " + std::to_string(count), "page");
  }
}

}  // namespace desk::draw
