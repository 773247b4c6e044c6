// Random XML jobs, most of them damaged.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace test_support {

/// A line of a job with one text in it that can be exchanged for another.
struct XmlLine {
  std::string before;
  std::string text;
  std::string after;
  bool isDropped = false;  ///< the format has it read and dropped
  int number = 0;          ///< where it was written last, from 1
};

/// An element that leads to other elements: lines with values, then the elements of the next level.
struct XmlElement {
  std::string tag;
  std::vector<XmlLine> lines;
  std::vector<XmlElement> children;

  /// The element alone, with the wanted children only: "Cut" and "Work" elements, say.
  XmlElement with(const std::string& childTag, int childNumber = 0) const;
};

/// The text of a job. Sets the numbers of its lines.
std::string write(XmlElement& root);

class XmlJobs {
 public:
  explicit XmlJobs(unsigned seed) : random_(seed) {}

  /// A job of few elements, values of which are missing, empty, repeated, misspelt or no numbers.
  XmlElement next();

 private:
  bool chance(int percent) { return number(100) < percent; }
  int number(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  template <class Table>
  void addValues(const Table& table, XmlElement& element);
  void addValue(const std::string& name, bool isNumber, XmlElement& element);
  void addStray(XmlElement& element);
  XmlElement piece();

  std::minstd_rand random_;
};

}  // namespace test_support
