// What a drawing says in words: how much of each bar is used, and what is odd about it.
#pragma once

#include <string>
#include <vector>

#include "desk/base/table.h"
#include "desk/job/bar_layout.h"

namespace desk::draw {

using namespace job;

/// "5 pieces, 6000 of 6500 used, 500 left over (270), yield 92.3 %": in brackets what the job says.
std::string summaryText(const BarPlace& bar);

/// What a piece is called: its number, else its place on the bar in brackets.
std::string pieceName(const BAR_T& bar, int place);

/// What a work is called: its name, else "no name".
std::string workName(const std::string& name);

/// A piece's length, or the job's own text where that is no plain number.
std::string lengthText(const PiecePlace& piece);

/// What is odd about a bar, for its picture: a line for each rule, notes left out.
std::vector<std::string> remarkTexts(const BarPlace& bar);

/// What is odd about the job, in the words and with the severity of a check: a line for each, notes
/// of one rule together.
std::vector<std::string> findingLines(const std::vector<BarPlace>& bars, const Oddities& header);

/// What is not in the picture: "1 piece and 2 works"; empty when all is.
std::string leftOutText(const std::vector<BarPlace>& bars);

/// "7 bars, 46 pieces, yield 95.4 %"; some bars count for no yield, see Yield.
std::string totalText(const std::vector<BarPlace>& bars);

/// One row for each bar, for the command line. "stated" is what the job says is left over.
TextTable summaryTable(const std::vector<BarPlace>& bars);

}  // namespace desk::draw
