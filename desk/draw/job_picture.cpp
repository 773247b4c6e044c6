#include "desk/draw/job_picture.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/bar_picture.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"
#include "desk/draw/svg_canvas.h"
#include "desk/draw/work_marks.h"
#include "desk/job/yield.h"

namespace desk::draw {

namespace {

constexpr double kDrawingWidth = kPageWidth - 2.0 * kMargin;
constexpr double kContinued = 16.0;  ///< where the bars of later pages begin

constexpr char kStyleSheet[] =
    "@page{size:297mm 210mm;margin:0}"
    "text{font-family:sans-serif;font-size:2.6px;fill:#1a1a1a}"
    ".paper{fill:#fff}"
    ".name{font-size:5px;font-weight:bold}"
    ".page{text-anchor:end;fill:#555}"
    ".continued{fill:#555}"
    ".title{font-size:3.2px;font-weight:bold}"
    ".sum{font-size:3px;text-anchor:end}"
    ".remark{font-size:2.8px;font-weight:bold;fill:#b00020}"
    ".number{font-size:3.2px;font-weight:bold;text-anchor:middle}"
    ".middle{text-anchor:middle}"
    ".right{text-anchor:end}"
    ".rest{text-anchor:middle;font-style:italic;fill:#555}"
    ".bar{fill:#eee;stroke:#777;stroke-width:.2}"
    ".open{fill:none;stroke:#777;stroke-width:.2;stroke-dasharray:1 .8}"
    ".piece{fill:#cfe0f0;stroke:#22394f;stroke-width:.25}"
    ".over{fill:#f6c6c6;stroke:#b00020;stroke-width:.25}"
    ".end{stroke:#b00020;stroke-width:.7}"
    ".w{stroke:#fff;stroke-width:.12}"
    ".w0{fill:#b3401f}.w1{fill:#1b4f9c}.w2{fill:#2f7d32}.w3{fill:#7a2c8f}.w4{fill:#111}"
    ".other{fill:#888}";

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

/// Puts the parts of a job's picture together.
class Composition {
 public:
  Composition(const JobHeading& heading, const std::vector<BarPlace>& bars)
      : heading_(heading),
        bars_(bars),
        marks_(bars),
        legend_(marks_, kDrawingWidth),
        scale_(scaleFor(bars, kDrawingWidth)) {}

  JobPicture draw() const {
    std::vector<BarPicture> pictures;
    std::vector<double> heights;
    for (const BarPlace& bar : bars_) {
      pictures.emplace_back(bar, scale_, marks_);
      heights.push_back(pictures.back().height());
    }
    const double legendTop = kMargin + 14.0;
    const double first = legendTop + legend_.height() + 2.0;
    const Pages pages = paginate(heights, first, kContinued);

    SvgCanvas canvas(kPageWidth, pages.height, title(), kStyleSheet);
    canvas.rectangle(0.0, 0.0, kPageWidth, pages.height, "paper");
    drawHeading(canvas);
    legend_.draw(canvas, legendTop);
    if (bars_.empty()) canvas.text({kMargin, first}, "The job has no bars.", "remark");
    for (std::size_t i = 0; i < pictures.size(); ++i) pictures[i].draw(canvas, pages.tops[i]);
    drawPageNumbers(canvas, pages.count);
    return {canvas.finish(), pages.height};
  }

 private:
  std::string title() const { return heading_.name.empty() ? heading_.source : heading_.name; }

  std::string shortTitle() const {
    return truncatedToMm(xmlText(title()), 0.8 * kDrawingWidth, kName);
  }

  void drawHeading(SvgCanvas& canvas) const {
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

  void drawPageNumbers(SvgCanvas& canvas, int count) const {
    for (int page = 0; count > 1 && page < count; ++page) {
      const double baseline = page * kPageHeight + kMargin + 2.0;
      if (page > 0) canvas.text({kMargin, baseline}, shortTitle(), "continued");
      canvas.text({kPageWidth - kMargin, baseline},
                  "page " + std::to_string(page + 1) + " of " + std::to_string(count), "page");
    }
  }

  const JobHeading& heading_;
  const std::vector<BarPlace>& bars_;
  WorkMarks marks_;
  Legend legend_;
  Scale scale_;
};

}  // namespace

JobPicture drawJob(const JobHeading& heading, const std::vector<BarPlace>& bars) {
  return Composition(heading, bars).draw();
}

}  // namespace desk::draw
