// What a test wants to know of a picture.
#pragma once

#include <initializer_list>
#include <list>
#include <string>
#include <vector>

/// Body rows in the shape in which the panel hands them over.
class Rows {
 public:
  Rows(std::initializer_list<std::vector<std::string>> rows) : rows_(rows) {
    for (auto& row : rows_) pointers_.push_back(&row);
  }
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  std::list<std::vector<std::string>*>& list() { return pointers_; }

 private:
  std::vector<std::vector<std::string>> rows_;
  std::list<std::vector<std::string>*> pointers_;
};

/// The parts of one picture. Reading fails the test on anything but a root `svg` and, directly
/// below it, elements `rect`, `line` and `text` without children of their own.
struct Picture {
  explicit Picture(const std::string& svg);

  std::vector<std::string> texts;
  std::vector<double> columnLines;  ///< positions of the vertical lines, without the frame
  int elements = 0;

 private:
  void read(const std::string& svg);
};
