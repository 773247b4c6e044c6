#include "desk/show/cut_pictures.h"

#include "desk/base/numbers.h"

namespace desk::show {

namespace {

// All in pixels of the page.
constexpr int kCodeWidth = 310;
constexpr int kCodeHeight = 30;
constexpr int kBestModule = 2;
constexpr int kSketchWidth = 76;
constexpr int kSketchHeight = 14;

void open(tinyxml2::XMLPrinter& page, int width, int height) {
  page.OpenElement("svg", true);
  page.PushAttribute("xmlns", "http://www.w3.org/2000/svg");
  page.PushAttribute("width", width);
  page.PushAttribute("height", height);
}

void close(tinyxml2::XMLPrinter& page) {
  page.CloseElement(true);
  page.CloseElement(true);
}

/// The dark stripes as path data.
std::string pathOf(const std::string& stripes, int module) {
  std::string path;
  int x = module * kQuietZone;
  bool isDark = true;
  for (const char stripe : stripes) {
    const int width = module * (stripe - '0');
    if (isDark) {
      path += "M" + std::to_string(x) + " 0h" + std::to_string(width) + "v" +
              std::to_string(kCodeHeight) + "h-" + std::to_string(width) + "z";
    }
    x += width;
    isDark = !isDark;
  }
  return path;
}

}  // namespace

void drawSketch(const job::PiecePlace& piece, tinyxml2::XMLPrinter& page) {
  open(page, kSketchWidth + 2, kSketchHeight + 2);
  std::string corners;
  for (const job::Point& point :
       job::outlineOf(1.0, kSketchWidth, kSketchHeight, piece.leftAngle, piece.rightAngle)) {
    corners += hundredthsText(point.x) + "," + hundredthsText(kSketchHeight + 1.0 - point.y) + " ";
  }
  page.OpenElement("polygon", true);
  page.PushAttribute("points", corners.c_str());
  page.PushAttribute("fill", "none");
  page.PushAttribute("stroke", "#000");
  close(page);
}

void drawCode(const std::string& text, tinyxml2::XMLPrinter& page) {
  const std::string stripes = code128(text);
  int module = kBestModule;
  while (module > 0 && module * widthOfCode(stripes) > kCodeWidth) --module;
  if (stripes.empty() || module == 0) return;
  open(page, module * widthOfCode(stripes), kCodeHeight);
  page.PushAttribute("shape-rendering", "crispEdges");
  page.OpenElement("path", true);
  page.PushAttribute("d", pathOf(stripes, module).c_str());
  close(page);
}

}  // namespace desk::show
