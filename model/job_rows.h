// The rows that the queries of both readers answer with, as views into the job.
//
// A row is made once, in file order, and handed to a sink: any callable that takes it. Script
// commands push it to Lua, the readers' lists copy it, the desk looks up where its values stand in
// the file. A row is a working row: it is reused for the next one. The texts of the job that it
// points to stay where they are until the job changes; derived texts are good for their row only.
#pragma once

#include <string>
#include <vector>

#include "model/job_records.h"
#include "model/job_walks.h"
#include "model/query_rows.h"

namespace model {

/// A text of the job.
using Text = const std::string*;

/// What a value that is never filled shows: an empty text that belongs to no job.
extern const std::string kNoText;

/// A number of the job.
using Number = const double*;

/// A number made of a text of the job.
struct ParsedNumber {
  Text text = &kNoText;
  double number = 0.0;
};

/// A text that is worked out or copied, and the text of the job that it comes from, if any.
struct DerivedText {
  Text text = &kNoText;
  Text source = nullptr;
};

/// One cut: a piece together with the bar that it is cut from.
struct CutRow {
  Text barNumber = &kNoText;
  Text length = &kNoText;  ///< of the bar
  Text cutLength = &kNoText;
  Text sxB = &kNoText;
  Text dxB = &kNoText;
  Text piecesOnBar = &kNoText;  ///< decimal text, good for the rows of this bar only
  Text orderCode = &kNoText;
  Text barName = &kNoText;
  Text pieceNumber = &kNoText;
};

/// One label: the thirteen slots that the printing scripts read. Six of them are never filled.
struct LabelRow {
  DerivedText profileCode;
  Text profileName = &kNoText;
  Text profileLength = &kNoText;
  Text nameProduct = &kNoText;
  Text color = &kNoText;
  Text indoorColor = &kNoText;
  Text outdoorColor = &kNoText;
  Text lengthProduct = &kNoText;
  Text position = &kNoText;
  Text window = &kNoText;
  DerivedText cutAngle;
  Text process = &kNoText;
  Text materialHeight = &kNoText;
};

/// One distinct work, with the dimensions of the first piece that it occurs on.
struct HoleRow {
  Text name = &kNoText;
  ParsedNumber length;  ///< of the piece, mm
  ParsedNumber width;   ///< MaxY of the bar, mm
  ParsedNumber height;  ///< MaxZ of the bar, mm
};

/// How many pieces a bar holds, as decimal text.
std::string pieceCountOf(const BAR_T& bar);

/// The cuts of one bar: `sink(piece)` for each, with `row` filled.
template <class Sink>
void forEachCutOf(const BAR_T& bar, CutRow& row, Sink&& sink) {
  const std::string pieceCount = pieceCountOf(bar);
  row.barNumber = &bar.BarNumber;
  row.length = &bar.length;
  row.piecesOnBar = &pieceCount;
  row.barName = &bar.BarName;
  for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
    row.cutLength = &piece.Length;
    row.sxB = &piece.sxB;
    row.dxB = &piece.dxB;
    row.orderCode = &piece.order_code;
    row.pieceNumber = &piece.PieceNumber;
    sink(piece);
  }
  row.piecesOnBar = &kNoText;
}

/// Prefetches texts that rows are about to show, all at a time.
template <class... Texts>
void prefetchTexts(const Texts&... texts) {
  (__builtin_prefetch(texts.data()), ...);
}

/// Shows a copy of a text of the job.
inline void copyInto(std::string& copy, DerivedText& shown, const std::string& text) {
  shown.source = &text;
  copy.assign(text);
}

/// One label per piece: sink(row). What differs from piece to piece is shown as a copy: Lua keeps
/// texts by their addresses, and those of each piece would displace the keys of the rows.
template <class Sink>
void forEachLabel(const JobView& job, Sink&& sink) {
  LabelRow row;
  std::string mark, angle;
  row.profileCode.text = &mark;
  row.cutAngle.text = &angle;
  Prefetcher ahead(job);
  for (const BAR_T& bar : job) {
    prefetchTexts(bar.DXF_Name, bar.length, bar.BarName, bar.BarColor, bar.BarLeftLength);
    row.profileName = &bar.DXF_Name;
    row.profileLength = &bar.length;
    row.nameProduct = &bar.BarName;
    row.color = &bar.BarColor;
    row.lengthProduct = &bar.BarLeftLength;
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      ahead.advance();
      if (const auto* next = &piece + 1; next != bar.piece.data() + bar.piece.size()) {
        prefetchTexts(next->mark, next->cut_angle_convert);
      }
      copyInto(mark, row.profileCode, piece.mark);
      copyInto(angle, row.cutAngle, piece.cut_angle_convert);
      sink(row);
    }
  }
}

/// Empties both lists, then adds one row per distinct work name to both. Throws
/// std::invalid_argument or std::out_of_range ("stod") when a dimension is no number; both then end
/// before it.
void collectHoles(const JobView& job, std::vector<HoleRow>& rows, std::vector<tagHOHEINFO>& holes);

/// The rows that were collected: sink(row).
template <class Sink>
void forEachHole(const std::vector<HoleRow>& rows, Sink&& sink) {
  constexpr std::size_t kAhead = 4;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (i + 2 * kAhead < rows.size()) __builtin_prefetch(rows[i + 2 * kAhead].name);
    if (i + kAhead < rows.size()) __builtin_prefetch(rows[i + kAhead].name->data());
    sink(rows[i]);
  }
}

/// The height of the job's profile: MaxZ of the first bar. Null for another version or without
/// bars.
Text profileHeightOf(const JobView& job);

/// The barcode of the last piece with these numbers; `kNoText` when there is none.
Text barCodeOf(const JobView& job, const std::string& barNumber, const std::string& pieceNumber);

}  // namespace model
