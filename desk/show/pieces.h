// The pieces of a job with their places: on the bar, and in the file.
#pragma once

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "desk/base/table.h"
#include "desk/job/selection.h"
#include "desk/job/traced_job.h"
#include "desk/show/answers.h"
#include "desk/show/origins.h"

namespace desk::show {

/// One piece. Bar and piece are the job's and go with it.
struct PieceFact {
  const BAR_T* bar;
  const PIECE_CHILD_SECOND_T* piece;
  int place;                   ///< on the bar, from 1
  std::optional<double> from;  ///< of its left tip, on the bar, mm; none behind an unknown length
  job::Position at;            ///< where it begins in the file
};

/// The piece of an element, which the job must have.
PieceFact pieceAt(const job::TracedJob& job, const job::Element& element);

std::vector<PieceFact> piecesOf(const job::TracedJob& job, const job::Selection& selection);

/// The row of a piece in the table of pieces, and what its columns hold.
/// @param origins gives cells theirs; null: none
std::vector<Cell> rowOf(const PieceFact& fact, const Origins* origins = nullptr);
std::vector<Column> pieceColumns();

/// A piece as an object: "works" is an array of objects, "label" an object. The order is that of
/// its members, for jsonDocument().
Json::Value pieceValue(const PieceFact& fact);
std::vector<std::string> pieceOrder();

/// A table of them, or a line for each value where a terminal is too narrow for it; a single piece
/// gets a line for each of its works.
std::string piecesText(const std::vector<PieceFact>& pieces, const Terminal& terminal);
std::string piecesCsv(const std::vector<PieceFact>& pieces);

/// An array of them, see pieceValue.
std::string piecesJson(const std::vector<PieceFact>& pieces);

}  // namespace desk::show
