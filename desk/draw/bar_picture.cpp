#include "desk/draw/bar_picture.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"

namespace desk::draw {

namespace {

constexpr double kTitleHeight = 6.5;    ///< above the band
constexpr double kFirstRow = 3.5;       ///< baseline below the band
constexpr double kLastRow = 1.4;        ///< baseline above the band
constexpr double kRow = 3.5;            ///< from one row of texts to the next
constexpr double kLine = 3.9;           ///< each line below the texts
constexpr double kGap = 5.0;            ///< to the next bar
constexpr double kBesideTitle = 3.0;    ///< between title and sum
constexpr double kBreak = 4.0;          ///< from the gap in a broken bar to its end
constexpr double kAround = 0.7;         ///< from the pieces to the frame of a bar of unknown length
constexpr double kFine = 1.0;           ///< pieces below that are thinly outlined
constexpr std::size_t kMostInTip = 20;  ///< works that are told with their piece

/// "3 x  Bars 1, 2, 5  ·  outer frame  ·  P65"
std::string titleOf(const BarGroup& group, const std::string& name) {
  std::string title = group.count() + name;
  const BAR_T& bar = *group.first().bar;
  for (const std::string* text : {&bar.BarName, &bar.DXF_Name, &bar.BarColor}) {
    if (!text->empty()) title += "  ·  " + *text;
  }
  return xmlText(title);
}

std::string valuesOf(const WORK_T& work) {
  return workName(work.Name) + ": side " + shortestText(work.ProfiLav) + ", X " +
         shortestText(work.PositionX) + ", Y " + shortestText(work.PositionY) + ", Z " +
         shortestText(work.PositionZ);
}

}  // namespace

BarPicture::BarPicture(const BarGroup& group, const Scale& scale, const WorkMarks& marks)
    : group_(group),
      bar_(group.first()),
      marks_(marks),
      drawn_(drawnOnPaper(bar_, scale)),
      lanes_(bar_),
      signs_(placeSigns(bar_, lanes_, drawn_.scale.along, drawn_.scale.across)),
      texts_(group, drawn_.scale.along, kBarRoom) {
  std::vector<std::string> how;
  if (drawn_.scale.along != scale.along) {
    how.push_back("This bar alone is drawn " + scaleText(drawn_.scale) + ".");
  }
  if (drawn_.isBroken) how.emplace_back("The bar is drawn broken: what is left over is longer.");
  const double room = kRoom - widthInMm(sum(), kSum) - kBesideTitle;
  const std::string name = xmlText(group.name());
  const bool isShort = widthInMm(name, kTitle) <= room / 2.0;
  title_ = truncatedToMm(titleOf(group, isShort ? name : "Bars"), room, kTitle);
  if (!isShort) {
    for (const std::string& numbers : group.numbers()) how.push_back(xmlText(numbers));
  }
  lines_ = linesBelow(group, how, texts_.entries(), signs_);
}

double BarPicture::band() const {
  const auto lanes = static_cast<double>(lanes_.count());
  return lanes * lane() + (lanes - 1.0) * kBetweenLanes;
}

double BarPicture::laneBottom(std::size_t lane, double top) const {
  return top + static_cast<double>(lane) * (this->lane() + kBetweenLanes) + this->lane();
}

double BarPicture::height() const {
  return aboveBand() + band() + belowBand() + lines_.count() * kLine + kGap;
}

double BarPicture::aboveBand() const {
  return kTitleHeight + static_cast<double>(texts_.rowsAbove()) * kRow;
}

double BarPicture::belowBand() const {
  return 1.0 + static_cast<double>(texts_.rowsBelow()) * kRow;
}

void BarPicture::draw(SvgCanvas& canvas, double top) const {
  canvas.beginGroup({"data-bar", std::to_string(bar_.number), title_ + "; " + sum()});
  drawTitle(canvas, top);
  const double band = top + aboveBand();
  drawStock(canvas, band);
  for (const bool isLine : {false, true}) {  // lines are not to be covered
    for (std::size_t i = 0; i < bar_.pieces.size(); ++i) {
      if (bar_.pieces[i].outline.empty() == isLine) draw(canvas, band, i);
    }
  }
  if (bar_.length > 0.0 && bar_.leftOver() < 0.0) {
    const double end = kBarLeft + length(bar_.length);
    canvas.line({end, band - 1.0}, {end, band + this->band() + 0.4}, "end");
  }
  drawLines(canvas, band + this->band() + belowBand());
  canvas.endGroup();
}

void BarPicture::draw(SvgCanvas& canvas, double top, std::size_t piece) const {
  canvas.beginGroup(subjectOf(piece));
  drawOutline(canvas, top, bar_.pieces[piece]);
  drawSigns(canvas, top, piece);
  drawTexts(canvas, top, piece);
  canvas.endGroup();
}

void BarPicture::drawTitle(SvgCanvas& canvas, double top) const {
  const double baseline = top + 4.0;
  canvas.text({kMargin, baseline}, title_, "title");
  canvas.text({kPageWidth - kMargin, baseline}, sum(), "sum");
}

std::string BarPicture::sum() const {
  const std::string text = (group_.bars.size() > 1 ? "each: " : "") + summaryText(bar_);
  return truncatedToMm(xmlText(text), 0.7 * kRoom, kSum);
}

/// How long the bar is on paper.
double BarPicture::stockLength() const {
  return drawn_.isBroken ? kBarRoom : length(bar_.length > 0.0 ? bar_.length : bar_.used);
}

void BarPicture::drawStock(SvgCanvas& canvas, double top) const {
  if (bar_.length == 0.0) {
    canvas.rectangle(kBarLeft - kAround, top - kAround, stockLength() + 5.0 * kAround,
                     band() + 2.0 * kAround, "open");
  }
  for (std::size_t i = 0; i < lanes_.count(); ++i) {
    const double bottom = laneBottom(i, top);
    const double textLine = bottom - lane() / 2.0 + 0.36 * kLabel.size;
    const std::string side = lanes_.nameOf(i);
    if (!side.empty()) canvas.text({kBarLeft - 1.8, textLine}, side, "side");
    if (bar_.length == 0.0) continue;
    canvas.rectangle(kBarLeft, bottom - lane(), stockLength(), lane(), "bar");
    if (drawn_.isBroken) drawBreak(canvas, kBarLeft + stockLength() - kBreak, bottom);
    if (i == 0) drawRest(canvas, textLine);
  }
}

/// How long what is left over is, where there is room to write it.
void BarPicture::drawRest(SvgCanvas& canvas, double baseline) const {
  if (!bar_.isKnown() || bar_.leftOver() <= 0.0 || lane() < kLabel.size) return;
  const std::string rest = hundredthsText(bar_.leftOver());
  const double room = stockLength() - length(bar_.used) - (drawn_.isBroken ? kBreak + 1.0 : 0.0);
  if (widthInMm(rest, kLabel) > room) return;
  canvas.text({kBarLeft + length(bar_.used) + room / 2.0, baseline}, rest, "rest");
}

/// The gap in a bar that is drawn shorter than it is.
void BarPicture::drawBreak(SvgCanvas& canvas, double x, double bottom) const {
  const double top = bottom - lane();
  canvas.polygon({{x - 0.8, bottom + 0.3},
                  {x + 0.8, top - 0.3},
                  {x + 2.0, top - 0.3},
                  {x + 0.4, bottom + 0.3}},
                 "break");
}

void BarPicture::drawOutline(SvgCanvas& canvas, double top, const PiecePlace& piece) const {
  if (piece.outline.empty()) {
    const double x = kBarLeft + length(piece.start);
    return canvas.line({x, top - 1.0}, {x, top + band() + 0.4}, "end");
  }
  std::string kind = piece.fits ? "piece" : "over";
  if (length(piece.length) < kFine) kind += " fine";
  for (std::size_t i = 0; i < lanes_.count(); ++i) {
    std::vector<Point> corners;
    for (const Point& corner : piece.outline) {
      corners.push_back(
          {kBarLeft + length(corner.x), laneBottom(i, top) - corner.y / drawn_.scale.across});
    }
    canvas.polygon(corners, kind);
  }
}

void BarPicture::drawSigns(SvgCanvas& canvas, double top, std::size_t piece) const {
  auto sign =
      std::lower_bound(signs_.begin(), signs_.end(), piece,
                       [](const Sign& one, std::size_t wanted) { return one.piece < wanted; });
  for (; sign != signs_.end() && sign->piece == piece; ++sign) {
    const WORK_T& work = *bar_.pieces[piece].works[sign->work].work;
    const Point at{kBarLeft + sign->at.x, laneBottom(sign->lane, top) - sign->at.y};
    const Subject subject = subjectOf(piece, sign->work);
    marks_.draw(canvas, at, work.Name, &subject);
  }
}

void BarPicture::drawTexts(SvgCanvas& canvas, double top, std::size_t piece) const {
  const std::vector<PlacedText>& texts = texts_.placed();
  auto text = std::lower_bound(
      texts.begin(), texts.end(), piece,
      [](const PlacedText& one, std::size_t wanted) { return one.piece < wanted; });
  for (; text != texts.end() && text->piece == piece; ++text) {
    const double x = kBarLeft + text->x;
    const bool isAbove = text->row >= TextRows::kBelow;
    const auto row = static_cast<double>(isAbove ? text->row - TextRows::kBelow : text->row);
    const double baseline =
        isAbove ? top - kLastRow - row * kRow : top + band() + kFirstRow + row * kRow;
    if (text->isLed && isAbove) {
      canvas.line({x, top - 0.4}, {x, baseline + 0.5}, "leader");
    } else if (text->isLed) {
      canvas.line({x, top + band() + 0.4}, {x, baseline - 0.85 * kNumber.size}, "leader");
    }
    canvas.text({x, baseline}, text->text, text->kind);
  }
}

void BarPicture::drawLines(SvgCanvas& canvas, double top) const {
  double baseline = top;
  for (const std::string& line : lines_.list) {
    canvas.text({kMargin, baseline += kLine}, line, "list");
  }
  for (const std::string& remark : lines_.remarks) {
    canvas.text({kMargin, baseline += kLine}, remark, "remark");
  }
}

std::string BarPicture::nameOf(std::size_t index) const {
  return pieceName(*bar_.bar, static_cast<int>(index) + 1);
}

Subject BarPicture::subjectOf(std::size_t piece) const {
  const PiecePlace& place = bar_.pieces[piece];
  std::string values = lineOf(place, nameOf(piece), group_.barCodeAt(piece));
  std::size_t others = 0;
  for (const WorkPlace& work : place.works) {
    if (work.isDrawn()) continue;
    if (others++ < kMostInTip) values += "; not drawn: " + valuesOf(*work.work);
  }
  if (others > kMostInTip) values += " and " + std::to_string(others - kMostInTip) + " more";
  return {"data-piece", std::to_string(bar_.number) + "." + std::to_string(piece + 1), values};
}

Subject BarPicture::subjectOf(std::size_t piece, std::size_t work) const {
  return {"data-work",
          std::to_string(bar_.number) + "." + std::to_string(piece + 1) + "." +
              std::to_string(work + 1),
          valuesOf(*bar_.pieces[piece].works[work].work)};
}

}  // namespace desk::draw
