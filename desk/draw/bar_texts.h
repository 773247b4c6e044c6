// What is written at a bar and below it: numbers, angles, lengths and barcodes where there is room,
// and a list of the rest.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "desk/draw/bar_groups.h"
#include "desk/draw/piece_label.h"

namespace desk::draw {

/// A text below the bar.
struct PlacedText {
  std::size_t piece;  ///< whose it is, from 0
  double x;           ///< mm from the bar's left end
  std::size_t row;    ///< of TextRows
  const char* kind;   ///< class of the element
  std::string text;
  bool isLed = false;  ///< whether a line must lead to it, as it is not right below its piece
};

/// Rows of texts that cover none of one another: first those below the bar from its edge down, then
/// those above it from its edge up.
class TextRows {
 public:
  static constexpr std::size_t kBelow = 3;
  static constexpr std::size_t kCount = 5;

  bool isFree(std::size_t row, double left, double right) const;
  void take(std::size_t row, double left, double right) { taken_[row].emplace(left, right); }

 private:
  std::array<std::map<double, double>, kCount> taken_;  ///< right ends by left ends
};

/// Neighbours of one length and the same angles that have no room for texts of their own count as
/// one: "1-29" with "29 x 12" below. Where their texts have no room either they stand in another
/// row, also above the bar, with a line that leads there.
class BarTexts {
 public:
  /// @param along millimetres of the bar that are one on paper
  /// @param room how wide the bar may be on paper, mm
  BarTexts(const BarGroup& group, double along, double room);

  /// By pieces.
  const std::vector<PlacedText>& placed() const { return placed_; }
  std::size_t rowsBelow() const { return rowsBelow_; }
  std::size_t rowsAbove() const { return rowsAbove_; }
  /// For the list below: what is not said whole at the pieces.
  const std::vector<std::string>& entries() const { return entries_; }

 private:
  /// Pieces that count as one.
  struct Run {
    std::size_t first;
    std::size_t last;
    double middle;         ///< on paper, mm
    std::size_t row = 0;   ///< of its name
    bool hasName = false;  ///< whether it is written
  };

  void addLabel(std::size_t index, const PieceLabel& label);
  std::vector<Run> runs() const;
  bool writeName(Run& run, std::size_t from, std::size_t to);
  bool writeSize(const Run& run);
  std::string entryOf(const Run& run) const;
  std::string nameAt(std::size_t index) const;
  std::string nameOf(const Run& run) const;
  std::string sizeOf(const Run& run) const;
  bool hasRoom(std::size_t row, double x, double width) const;
  void write(std::size_t piece, double x, double width, std::size_t row, const char* kind,
             const std::string& text, bool isLed = false);

  const BarGroup& group_;
  const BarPlace& bar_;
  double along_;
  double room_;
  TextRows taken_;
  std::vector<PieceLabel> labels_;
  std::vector<PlacedText> placed_;
  std::vector<std::string> entries_;
  std::size_t rowsBelow_ = 0;
  std::size_t rowsAbove_ = 0;
};

}  // namespace desk::draw
