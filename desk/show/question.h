// What cusdesk show is asked.
#pragma once

#include <string>

#include "desk/base/table.h"
#include "desk/job/selection.h"

namespace desk::show {

enum class Subject { Bars, Works, Cuts, Holes, Labels, Dimensions };

/// A table of a job.
struct TableRow {
  const char* name;
  Subject subject;  ///< what the panel is asked
  bool takesBar;
  bool takesBarCode;
  bool isPieces = false;  ///< it is not asked
};
inline constexpr TableRow kTables[] = {{"bars", Subject::Bars, true, true},
                                       {"pieces", Subject::Cuts, true, true, true},
                                       {"works", Subject::Works, true, true},
                                       {"cuts", Subject::Cuts, true, true},
                                       {"holes", Subject::Holes, false, false},
                                       {"labels", Subject::Labels, true, true},
                                       {"dimensions", Subject::Dimensions, false, true}};

/// What is asked.
struct Question {
  Subject subject;
  std::string barCode;  ///< empty: of all pieces
  std::string bar;      ///< number; empty: of all bars
};

/// What the panel is asked for it: its commands select by one thing or by none.
Question panelQuestion(const Question& question);

/// Leaves the rows of an answer of the panel that were asked for.
/// @param job the records that it answered from
/// Throws std::logic_error for an answer that these records do not have.
void narrow(TextTable& answer, const Question& question, const DATA_T& job);

/// What surprises in an answer and is so on the panel too; empty for nothing.
std::string remarkOn(const TextTable& answer, const Question& question);

}  // namespace desk::show
