#include <tinyxml2.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "desk/base/text.h"
#include "host/utility.h"

namespace UTILITY {
namespace {

/// Where the baseline lies below the middle of a line, in hundredths of the em square. Computed
/// here because viewers differ in how they align a text's middle.
constexpr std::int64_t kBaselinePercent = 36;

}  // namespace

struct CSVGCreator::Drawing {
  tinyxml2::XMLPrinter printer;
  bool open = true;  ///< whether the root element is
};

CSVGCreator::CSVGCreator() : drawing_(nullptr) {
  begin(0, 0);
}

CSVGCreator::~CSVGCreator() {
  delete drawing_;
}

void CSVGCreator::begin(int width, int height) {
  auto next = std::make_unique<Drawing>();
  width = std::max(width, 0);
  height = std::max(height, 0);
  const std::string viewBox = "0 0 " + std::to_string(width) + " " + std::to_string(height);
  next->printer.OpenElement("svg");
  next->printer.PushAttribute("xmlns", "http://www.w3.org/2000/svg");
  next->printer.PushAttribute("width", width);
  next->printer.PushAttribute("height", height);
  next->printer.PushAttribute("viewBox", viewBox.c_str());
  next->printer.PushAttribute("font-family", "sans-serif");
  delete drawing_;
  drawing_ = next.release();
}

void CSVGCreator::rectangle(const tagRECT& area, const char* fill) {
  if (!drawing_->open || area.left >= area.right || area.top >= area.bottom) return;
  tinyxml2::XMLPrinter& printer = drawing_->printer;
  printer.OpenElement("rect");
  printer.PushAttribute("x", area.left);
  printer.PushAttribute("y", area.top);
  printer.PushAttribute("width", std::int64_t{area.right} - area.left);
  printer.PushAttribute("height", std::int64_t{area.bottom} - area.top);
  printer.PushAttribute("fill", fill);
  printer.CloseElement();
}

void CSVGCreator::line(const tagPOINT& from, const tagPOINT& to, const char* stroke) {
  if (!drawing_->open) return;
  // A stroke of one pixel covers whole pixels only when it runs along their middle.
  const double shiftX = from.x == to.x ? 0.5 : 0.0;
  const double shiftY = from.y == to.y ? 0.5 : 0.0;
  tinyxml2::XMLPrinter& printer = drawing_->printer;
  printer.OpenElement("line");
  printer.PushAttribute("x1", from.x + shiftX);
  printer.PushAttribute("y1", from.y + shiftY);
  printer.PushAttribute("x2", to.x + shiftX);
  printer.PushAttribute("y2", to.y + shiftY);
  printer.PushAttribute("stroke", stroke);
  printer.CloseElement();
}

void CSVGCreator::text(const tagPOINT& at, const std::string& text, int fontSize, const char* fill,
                       bool bold) {
  if (!drawing_->open) return;
  tinyxml2::XMLPrinter& printer = drawing_->printer;
  printer.OpenElement("text");
  printer.PushAttribute("x", at.x);
  printer.PushAttribute("y", at.y + kBaselinePercent * fontSize / 100);
  printer.PushAttribute("font-size", fontSize);
  if (bold) printer.PushAttribute("font-weight", "bold");
  printer.PushAttribute("fill", fill);
  printer.PushText(desk::xmlText(text).c_str());
  printer.CloseElement();
}

std::string CSVGCreator::getXml() {
  if (drawing_->open) drawing_->printer.CloseElement();
  drawing_->open = false;
  return drawing_->printer.CStr();
}

}  // namespace UTILITY
