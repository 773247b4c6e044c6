#include <tinyxml2.h>
#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>

#include "host/utility.h"

namespace UTILITY {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

/// Where the baseline lies below the middle of a line, in hundredths of the em square. Computed
/// here because viewers differ in how they align a text's middle.
constexpr std::int64_t kBaselinePercent = 36;

std::string writable(const std::string& text) {
  std::string valid;
  utf8::unchecked::replace_invalid(text.begin(), text.end(), std::back_inserter(valid),
                                   kReplacement);
  std::string clean;
  for (auto at = valid.cbegin(); at != valid.cend();) {
    std::uint32_t codePoint = utf8::unchecked::next(at);
    if (codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F)) codePoint = ' ';
    if (codePoint == 0xFFFE || codePoint == 0xFFFF) codePoint = kReplacement;
    utf8::unchecked::append(codePoint, std::back_inserter(clean));
  }
  return clean;
}

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
  printer.PushText(writable(text).c_str());
  printer.CloseElement();
}

std::string CSVGCreator::getXml() {
  if (drawing_->open) drawing_->printer.CloseElement();
  drawing_->open = false;
  return drawing_->printer.CStr();
}

}  // namespace UTILITY
