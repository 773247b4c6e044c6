#include "desk/draw/svg_canvas.h"

#include <map>

#include "desk/base/numbers.h"
#include "desk/base/text.h"

namespace desk::draw {

namespace {

/// A hundredth of a millimetre is finer than any printer.
std::string number(double value) {
  return hundredthsText(value);
}

std::string pair(const Point& point) {
  return number(point.x) + "," + number(point.y);
}

/// Whether one of the words of `text`, which blanks part, is `word`.
bool hasWord(const std::string& text, const std::string& word) {
  return (" " + text + " ").find(" " + word + " ") != std::string::npos;
}

}  // namespace

std::string propertiesOf(const Look& look) {
  std::string properties = look.properties;
  if (look.lettering == nullptr) return properties;
  properties += std::string(properties.empty() ? "" : ";") +
                "font-size:" + number(look.lettering->size) + "px";
  return properties + (look.lettering->bold ? ";font-weight:bold" : "");
}

std::string styleSheet() {
  std::string sheet = "@page{size:297mm 210mm;margin:0}text{" + propertiesOf(kTextLook) + "}";
  for (const Look& look : kLooks) {
    sheet += "." + std::string(look.kind) + "{" + propertiesOf(look) + "}";
  }
  return sheet;
}

SvgCanvas::SvgCanvas(For target, double width, double height, const std::string& title)
    : target_(target) {
  const std::string unit = target == For::Paper ? "mm" : "";
  printer_.OpenElement("svg");
  printer_.PushAttribute("xmlns", "http://www.w3.org/2000/svg");
  printer_.PushAttribute("width", (number(width) + unit).c_str());
  printer_.PushAttribute("height", (number(height) + unit).c_str());
  printer_.PushAttribute("viewBox", ("0 0 " + number(width) + " " + number(height)).c_str());
  if (target == For::Page) pushLook(kTextLook);
  pushTitle(title);
  if (target == For::Page) return;
  printer_.OpenElement("style");
  printer_.PushText(styleSheet().c_str());
  printer_.CloseElement();
}

void SvgCanvas::rectangle(double x, double y, double width, double height, const char* kind) {
  open("rect", kind);
  push("x", x);
  push("y", y);
  push("width", width);
  push("height", height);
  printer_.CloseElement();
}

void SvgCanvas::line(const Point& from, const Point& to, const char* kind) {
  open("line", kind);
  push("x1", from.x);
  push("y1", from.y);
  push("x2", to.x);
  push("y2", to.y);
  printer_.CloseElement();
}

void SvgCanvas::polygon(const std::vector<Point>& corners, const std::string& kind) {
  std::string points;
  for (const Point& corner : corners) points += (points.empty() ? "" : " ") + pair(corner);
  open("polygon", kind);
  printer_.PushAttribute("points", points.c_str());
  printer_.CloseElement();
}

void SvgCanvas::path(const Point& at, const char* relative, const std::string& kind,
                     const Subject* subject) {
  open("path", kind);
  printer_.PushAttribute("d", ("M" + pair(at) + relative).c_str());
  if (subject != nullptr) push(*subject);
  printer_.CloseElement(true);
}

void SvgCanvas::text(const Point& at, const std::string& text, const char* kind) {
  open("text", kind);
  push("x", at.x);
  push("y", at.y);
  printer_.PushText(xmlText(text).c_str());
  printer_.CloseElement();
}

void SvgCanvas::beginGroup(const Subject& subject) {
  printer_.OpenElement("g");
  push(subject);
}

void SvgCanvas::endGroup() {
  printer_.CloseElement();
}

std::string SvgCanvas::finish() {
  printer_.CloseElement();
  return printer_.CStr();
}

void SvgCanvas::open(const char* name, const std::string& kind) {
  printer_.OpenElement(name);
  printer_.PushAttribute("class", kind.c_str());
  if (target_ == For::Paper) return;
  std::map<std::string, std::string> properties;  // later looks go before earlier ones
  for (const Look& look : kLooks) {
    if (!hasWord(kind, look.kind)) continue;
    eachProperty(propertiesOf(look), [&](const std::string& property, const std::string& value) {
      properties[property] = value;
    });
  }
  for (const auto& [property, value] : properties) {
    printer_.PushAttribute(property.c_str(), value.c_str());
  }
}

void SvgCanvas::pushLook(const Look& look) {
  eachProperty(propertiesOf(look), [&](const std::string& name, const std::string& value) {
    printer_.PushAttribute(name.c_str(), value.c_str());
  });
}

void SvgCanvas::push(const char* name, double value) {
  printer_.PushAttribute(name, number(value).c_str());
}

void SvgCanvas::push(const Subject& subject) {
  printer_.PushAttribute(subject.attribute, subject.id.c_str());
  pushTitle(subject.values);
}

void SvgCanvas::pushTitle(const std::string& title) {
  printer_.OpenElement("title", true);
  printer_.PushText(xmlText(title).c_str());
  printer_.CloseElement();
}

}  // namespace desk::draw
