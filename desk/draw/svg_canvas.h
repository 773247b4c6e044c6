// Writes the elements of a drawing as SVG.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <vector>

#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;  // what is drawn are places on the bars of a job

/// One SVG document, built in painting order. Lengths are millimetres on paper, from the top left
/// corner down. How an element looks is told by its class, which the style sheet describes. Texts
/// may hold anything: what has no place in XML is replaced.
class SvgCanvas {
 public:
  SvgCanvas(double width, double height, const std::string& title, const char* styleSheet);

  void rectangle(double x, double y, double width, double height, const char* kind);
  void line(const Point& from, const Point& to, const char* kind);
  void polygon(const std::vector<Point>& corners, const char* kind);
  /// `relative` is path data that starts from `at`.
  void path(const Point& at, const char* relative, const std::string& kind);
  /// One line of text with its baseline at `at`.
  void text(const Point& at, const std::string& text, const char* kind);

  /// What is drawn until `endGroup` belongs together; viewers show the title of what is pointed at.
  void beginGroup(const std::string& title);
  void endGroup();

  /// The document. Nothing can be drawn afterwards.
  std::string finish();

 private:
  void open(const char* name, const char* kind);
  void push(const char* name, double value);
  void pushTitle(const std::string& title);

  tinyxml2::XMLPrinter printer_;
};

}  // namespace desk::draw
