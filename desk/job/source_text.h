// One job file as text: where its lines, characters and elements are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace desk::job {

/// A place in a text, as people count. A column counts characters (Unicode code points), not bytes;
/// a byte that is no UTF-8 counts as one. A byte order mark counts for nothing.
struct Position {
  int line = 0;    ///< from 1
  int column = 0;  ///< from 1; 0 when only the line is known
};

/// "7:12", or "7" when only the line is known
std::string positionText(const Position& at);

class SourceText {
 public:
  /// @param name what messages call the file
  SourceText(std::string name, std::string bytes);

  const std::string& name() const { return name_; }
  const std::string& bytes() const { return bytes_; }

  /// 3 when a byte order mark stands in front, else 0.
  std::size_t markSize() const { return markSize_; }

  int lineCount() const { return static_cast<int>(lineStarts_.size()); }

  /// The line without its end, from a column on; empty for what is not there. As for position(),
  /// the line's length does not matter.
  std::string_view line(int number, int column = 1) const;

  /// The position of the byte at `offset`, in a time that does not depend on the line's length.
  Position position(std::size_t offset) const;

 private:
  void findLines();
  void markCharacters();
  std::size_t charactersBetween(std::size_t start, std::size_t end) const;
  std::size_t charactersBefore(std::size_t offset) const;
  std::size_t offsetOf(std::size_t character) const;
  std::size_t characterEnd(std::size_t start) const;

  std::string name_;
  std::string bytes_;
  std::size_t markSize_;
  /// Where the first character from a multiple of some bytes on starts.
  struct Mark {
    std::size_t start;
    std::size_t charactersBefore;
  };

  std::vector<std::size_t> lineStarts_;
  std::vector<Mark> marks_;  ///< none in a text of ASCII, where each character is a byte
};

/// The part of a source line that is shown below a finding.
struct Excerpt {
  std::string text;       ///< fits into the columns asked for; what cannot be shown is spelled out
  std::size_t start = 0;  ///< at which column of `text` the place is, from 0
  std::size_t width =
      1;  ///< how many columns the word at the place fills: a text, a number, a name
};

/// Cuts a line around a place, or shows its start when only the line is known. Takes the same time
/// in a job that is one line of many megabytes.
Excerpt excerptOf(const SourceText& source, const Position& at, std::size_t columns);

/// What stands in a line from a place on, up to the word at the column `until`: 4,000 characters
/// and that word at most. What cannot be shown is spelled out.
std::string partOf(const SourceText& source, const Position& from, int until);

/// An element of a job, counted from 1 within its parent; 0 where the level is not reached.
struct Element {
  int bar = 0;
  int piece = 0;
  int work = 0;

  bool operator==(const Element& other) const {
    return bar == other.bar && piece == other.piece && work == other.work;
  }
};

/// "the header", "bar 2", "piece 3 of bar 2", "work 1 of piece 3 of bar 2"
std::string describe(const Element& element);

/// A place in one of the files of a check.
struct Place {
  int file = -1;  ///< in the order of loading, from 0
  Position at;
};

}  // namespace desk::job
