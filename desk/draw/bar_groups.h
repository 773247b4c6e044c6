// Bars that are cut alike, so that a drawing shows them once.
#pragma once

#include <string>
#include <vector>

#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;

/// Whether a text is the whole number behind that of another: "8" behind "7".
bool isNextNumber(const std::string& text, const std::string& before);

/// Bars whose drawings are the same but for the bars' numbers and the pieces' barcodes.
struct BarGroup {
  std::vector<const BarPlace*> bars;  ///< at least one, in the order of the job

  /// The one that is drawn.
  const BarPlace& first() const { return *bars.front(); }

  /// "3 x  "; empty for one bar.
  std::string count() const;
  /// "Bar 7", "Bars 1-3, 5"
  std::string name() const;
  /// "Bars 1-3", "5"
  std::vector<std::string> numbers() const;

  bool barCodesDifferAt(std::size_t piece) const;
  /// The barcode of all their pieces at this place from 0; empty where they differ.
  std::string barCodeAt(std::size_t piece) const;
};

enum class EqualBars { Once, Each };

/// Puts together what is equal, in the order of the groups' first bars. Equal are the texts of the
/// profile (name, drawing, colour, width, height), the bar's length and what the job says is left
/// over where that is shown, the remarks, and piece by piece the number, the length, both angles
/// and every work with its name, side and place. Numbers of bars and barcodes never are and keep
/// nothing apart.
/// @param bars laid out and judged; must outlive the result
std::vector<BarGroup> groupsOf(const std::vector<BarPlace>& bars, EqualBars equal);

}  // namespace desk::draw
