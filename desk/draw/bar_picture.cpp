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

std::string titleOf(const BarGroup& group) {
  std::string title = group.name();
  const BAR_T& bar = *group.first().bar;
  for (const std::string* text : {&bar.BarName, &bar.DXF_Name, &bar.BarColor}) {
    if (!text->empty()) title += "  ·  " + *text;
  }
  return xmlText(title);
}

std::string valuesOf(const WORK_T& work) {
  return work.Name + ": side " + shortestText(work.ProfiLav) + ", X " +
         shortestText(work.PositionX) + ", Y " + shortestText(work.PositionY) + ", Z " +
         shortestText(work.PositionZ);
}

}  // namespace

BarPicture::BarPicture(const BarGroup& group, const Scale& scale, const WorkMarks& marks)
    : group_(group), bar_(group.first()), scale_(scale), marks_(marks) {
  const double room = kRoom - widthInMm(sum(), kSum) - kBesideTitle;
  title_ = truncatedToMm(titleOf(group), room, kTitle);
  std::vector<std::string> entries;
  for (std::size_t i = 0; i < bar_.pieces.size(); ++i) {
    const PiecePlace& piece = bar_.pieces[i];
    const std::string barCode = group.barCodeAt(i);
    labels_.push_back(labelOf(piece, nameOf(i), barCode, length(piece.length)));
    if (!labels_.back().isWhole) entries.push_back(lineOf(piece, nameOf(i), barCode));
  }
  for (const PieceLabel& label : labels_) {
    const bool isHigh = !label.length.empty() || !label.barCode.empty();
    labelHeight_ = std::max(labelHeight_, isHigh ? 10.4 : label.number.empty() ? 1.0 : 4.0);
  }
  list_ = linesOf(entries, kRoom);
  const std::vector<std::string> codes = barCodeLines();
  list_.insert(list_.end(), codes.begin(), codes.end());
  if (list_.size() > kMostListLines) {
    list_.resize(kMostListLines);
    list_.back() = "and more; \"cusdesk show\" lists them all";
  }
  for (const std::string& text : remarkTexts(bar_)) {
    remarks_.push_back(truncatedToMm(xmlText(text), kRoom, kRemark));
  }
}

/// The barcodes that differ from bar to bar, behind the numbers of their pieces.
std::vector<std::string> BarPicture::barCodeLines() const {
  std::vector<std::string> lines;
  for (const BarPlace* bar : group_.bars) {
    if (group_.bars.size() == 1 || lines.size() > kMostListLines) break;
    std::vector<std::string> codes;
    for (std::size_t i = 0; i < bar->pieces.size(); ++i) {
      const std::string code = xmlText(bar->pieces[i].piece->BarCode);
      if (!code.empty() && group_.barCodeAt(i).empty()) {
        codes.push_back(xmlText(nameOf(i)) + ": " + code);
      }
    }
    if (codes.empty()) continue;
    codes.front().insert(0, "Bar " + xmlText(bar->bar->BarNumber) + ": ");
    const std::vector<std::string> more = linesOf(codes, kRoom);
    lines.insert(lines.end(), more.begin(), more.end());
  }
  return lines;
}

double BarPicture::height() const {
  const auto lines = static_cast<double>(list_.size() + remarks_.size());
  return kTitleHeight + band() + labelHeight_ + lines * kLine + kGap;
}

void BarPicture::draw(SvgCanvas& canvas, double top) const {
  const double bottom = top + kTitleHeight + band();
  canvas.beginGroup({"data-bar", std::to_string(bar_.number), titleOf(group_) + "; " + sum()});
  drawTitle(canvas, top);
  drawStock(canvas, bottom);
  for (std::size_t i = 0; i < bar_.pieces.size(); ++i) {
    canvas.beginGroup(subjectOf(i));
    drawPiece(canvas, i, bottom);
    drawLabel(canvas, i, bottom);
    canvas.endGroup();
  }
  if (bar_.length > 0.0 && bar_.leftOver() < 0.0) {
    const double end = kMargin + length(bar_.length);
    canvas.line({end, bottom - band() - 1.5}, {end, bottom + 1.5}, "end");
  }
  drawLines(canvas, bottom + labelHeight_);
  canvas.endGroup();
}

void BarPicture::drawTitle(SvgCanvas& canvas, double top) const {
  const double baseline = top + 4.0;
  canvas.text({kMargin, baseline}, title_, "title");
  canvas.text({kPageWidth - kMargin, baseline}, sum(), "sum");
}

std::string BarPicture::sum() const {
  return (group_.bars.size() > 1 ? "each: " : "") + summaryText(bar_);
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
  for (std::size_t i = 0; i < piece.works.size(); ++i) {
    const WorkPlace& work = piece.works[i];
    if (!work.isDrawn()) continue;
    marks_.draw(canvas, onPaper(work.at, bottom), work.work->Name, subjectOf(index, i));
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

Subject BarPicture::subjectOf(std::size_t piece) const {
  const PiecePlace& place = bar_.pieces[piece];
  std::string values = lineOf(place, nameOf(piece), group_.barCodeAt(piece));
  for (const WorkPlace& work : place.works) {
    if (!work.isDrawn()) values += "; not drawn: " + valuesOf(*work.work);
  }
  return {"data-piece", std::to_string(bar_.number) + "." + std::to_string(piece + 1), values};
}

Subject BarPicture::subjectOf(std::size_t piece, std::size_t work) const {
  return {"data-work", subjectOf(piece).id + "." + std::to_string(work + 1),
          valuesOf(*bar_.pieces[piece].works[work].work)};
}

}  // namespace desk::draw
