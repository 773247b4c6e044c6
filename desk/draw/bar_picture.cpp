#include "desk/draw/bar_picture.h"

#include <algorithm>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/draw/sheet.h"
#include "desk/draw/summary.h"

namespace desk::draw {

namespace {

constexpr double kRoom = kPageWidth - 2.0 * kMargin;
constexpr double kTitleHeight = 6.0;  ///< above the band
constexpr double kLine = 3.7;         ///< each line below the labels
constexpr double kGap = 5.0;          ///< to the next bar
constexpr double kBesideTitle = 3.0;  ///< between title and sum
constexpr std::size_t kMostListLines = 12;

std::string titleOf(const BAR_T& bar) {
  std::string title = "Bar " + (bar.BarNumber.empty() ? std::string("?") : bar.BarNumber);
  for (const std::string* text : {&bar.BarName, &bar.DXF_Name, &bar.BarColor}) {
    if (!text->empty()) title += "  ·  " + *text;
  }
  return xmlText(title);
}

/// What a viewer shows when one points at a piece.
std::string pieceTip(const PiecePlace& place, const std::string& name) {
  std::string tip = lineOf(place, name);
  for (const WorkPlace& work : place.works) {
    tip += "; " + work.work->Name + ": side " + hundredthsText(work.work->ProfiLav) + ", X " +
           hundredthsText(work.work->PositionX) + ", Y " + hundredthsText(work.work->PositionY) +
           ", Z " + hundredthsText(work.work->PositionZ);
  }
  return tip;
}

}  // namespace

BarPicture::BarPicture(const BarPlace& bar, const Scale& scale, const WorkMarks& marks)
    : bar_(bar), scale_(scale), marks_(marks) {
  std::vector<std::string> entries;
  for (std::size_t i = 0; i < bar.pieces.size(); ++i) {
    const PiecePlace& piece = bar.pieces[i];
    labels_.push_back(labelOf(piece, nameOf(i), length(piece.length)));
    if (!labels_.back().isWhole) entries.push_back(lineOf(piece, nameOf(i)));
  }
  for (const PieceLabel& label : labels_) {
    const bool isHigh = !label.length.empty() || !label.barCode.empty();
    labelHeight_ = std::max(labelHeight_, isHigh ? 10.4 : label.number.empty() ? 1.0 : 4.0);
  }
  list_ = linesOf(entries, kRoom);
  if (list_.size() > kMostListLines) {
    list_.resize(kMostListLines);
    list_.back() = "and more; \"cusdesk show\" lists them all";
  }
  for (const std::string& text : remarkTexts(bar)) {
    remarks_.push_back(truncatedToMm(xmlText(text), kRoom, kRemark));
  }
}

double BarPicture::height() const {
  const auto lines = static_cast<double>(list_.size() + remarks_.size());
  return kTitleHeight + band() + labelHeight_ + lines * kLine + kGap;
}

void BarPicture::draw(SvgCanvas& canvas, double top) const {
  const double bottom = top + kTitleHeight + band();
  drawTitle(canvas, top);
  drawStock(canvas, bottom);
  for (std::size_t i = 0; i < bar_.pieces.size(); ++i) {
    canvas.beginGroup(pieceTip(bar_.pieces[i], nameOf(i)));
    drawPiece(canvas, i, bottom);
    drawLabel(canvas, i, bottom);
    canvas.endGroup();
  }
  if (bar_.length > 0.0 && bar_.leftOver() < 0.0) {
    const double end = kMargin + length(bar_.length);
    canvas.line({end, bottom - band() - 1.5}, {end, bottom + 1.5}, "end");
  }
  drawLines(canvas, bottom + labelHeight_);
}

void BarPicture::drawTitle(SvgCanvas& canvas, double top) const {
  const std::string sum = summaryText(bar_);
  const double room = kRoom - widthInMm(sum, kSum) - kBesideTitle;
  const double baseline = top + 4.0;
  canvas.text({kMargin, baseline}, truncatedToMm(titleOf(*bar_.bar), room, kTitle), "title");
  canvas.text({kPageWidth - kMargin, baseline}, sum, "sum");
}

void BarPicture::drawStock(SvgCanvas& canvas, double bottom) const {
  const bool known = bar_.length > 0.0;
  canvas.rectangle(kMargin, bottom - band(), length(known ? bar_.length : bar_.used), band(),
                   known ? "bar" : "open");
  if (!bar_.isKnown() || bar_.leftOver() <= 0.0) return;
  const std::string rest = hundredthsText(bar_.leftOver());
  if (widthInMm(rest, kLabel) > length(bar_.leftOver())) return;
  const double middle = kMargin + length(bar_.used + bar_.leftOver() / 2.0);
  canvas.text({middle, bottom - band() / 2.0 + 0.36 * kLabel.size}, rest, "rest");
}

void BarPicture::drawPiece(SvgCanvas& canvas, std::size_t index, double bottom) const {
  const PiecePlace& piece = bar_.pieces[index];
  if (piece.outline.empty()) {
    const double x = kMargin + length(piece.start);
    return canvas.line({x, bottom - band() - 1.0}, {x, bottom + 1.0}, "end");
  }
  std::vector<Point> corners;
  for (const Point& corner : piece.outline) corners.push_back(onPaper(corner, bottom));
  canvas.polygon(corners, piece.fits ? "piece" : "over");
  for (const WorkPlace& work : piece.works) {
    if (!work.isDrawn()) continue;
    marks_.draw(canvas, onPaper(work.at, bottom), work.work->Name);
  }
}

void BarPicture::drawLabel(SvgCanvas& canvas, std::size_t index, double bottom) const {
  const PiecePlace& piece = bar_.pieces[index];
  const PieceLabel& label = labels_[index];
  const double left = kMargin + length(piece.start);
  const double right = left + length(piece.length);
  const double middle = (left + right) / 2.0;
  const double first = bottom + 3.3;
  const auto write = [&](double x, double y, const std::string& text, const char* kind) {
    if (!text.empty()) canvas.text({x, y}, text, kind);
  };
  write(left + kBetweenLabels / 2.0, first, label.leftAngle, "left");
  write(middle, first, label.number, "number");
  write(right - kBetweenLabels / 2.0, first, label.rightAngle, "right");
  write(middle, first + 3.2, label.length, "middle");
  write(middle, first + 6.3, label.barCode, "middle");
}

void BarPicture::drawLines(SvgCanvas& canvas, double top) const {
  double baseline = top;
  for (const std::string& line : list_) {
    canvas.text({kMargin, baseline += kLine}, line, "list");
  }
  for (const std::string& remark : remarks_) {
    canvas.text({kMargin, baseline += kLine}, remark, "remark");
  }
}

Point BarPicture::onPaper(const Point& point, double bottom) const {
  return {kMargin + point.x / scale_.along, bottom - point.y / scale_.across};
}

std::string BarPicture::nameOf(std::size_t index) const {
  return pieceName(*bar_.bar, static_cast<int>(index) + 1);
}

}  // namespace desk::draw
