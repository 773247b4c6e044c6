// Writes the elements of a drawing as SVG.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <vector>

#include "desk/draw/looks.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;  // what is drawn are places on the bars of a job

/// What an element of a drawing is of.
struct Subject {
  const char* attribute;  ///< "data-bar", "data-piece" or "data-work"
  std::string id;         ///< "1", "1.2" or "1.2.3": places in the job from 1
  std::string values;     ///< what viewers show when one points at it
};

/// One SVG document, built in painting order. Lengths are millimetres on paper, from the top left
/// corner down. How an element looks is told by its class, see looks.h. Texts may hold anything:
/// what has no place in XML is replaced.
class SvgCanvas {
 public:
  enum class For {
    Paper,  ///< a document of its own, with a style sheet, true to size in millimetres
    Page,   ///< part of a page: presentation attributes only, sizes without a unit
  };

  SvgCanvas(For target, double width, double height, const std::string& title);

  void rectangle(double x, double y, double width, double height, const char* kind);
  void line(const Point& from, const Point& to, const char* kind);
  void polygon(const std::vector<Point>& corners, const std::string& kind);
  /// `relative` is path data that starts from `at`.
  void path(const Point& at, const char* relative, const std::string& kind,
            const Subject* subject = nullptr);
  /// One line of text with its baseline at `at`.
  void text(const Point& at, const std::string& text, const char* kind);

  /// What is drawn until `endGroup` belongs to the subject.
  void beginGroup(const Subject& subject);
  void endGroup();

  /// The document. Nothing can be drawn afterwards.
  std::string finish();

 private:
  void open(const char* name, const std::string& kind);
  void push(const char* name, double value);
  void push(const Subject& subject);
  void pushLook(const Look& look);
  void pushTitle(const std::string& title);

  tinyxml2::XMLPrinter printer_;
  For target_;
};

}  // namespace desk::draw
