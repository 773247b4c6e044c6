#include "desk/show/pieces.h"

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/job/bar_layout.h"
#include "desk/job/piece_text.h"

namespace desk::show {

namespace {

TextTable tableOf(const std::vector<PieceFact>& pieces) {
  TextTable table{{"bar", "place", "piece", "from", "length", "left", "right", "barcode", "works",
                   "label", "line"},
                  {}};
  for (const PieceFact& fact : pieces) {
    const PIECE_T& piece = *fact.piece;
    std::vector<std::string> works;
    for (const WORK_T& work : piece.work) works.push_back(job::workText(work));
    table.rows.push_back({{fact.bar->BarNumber},
                          numberCell(fact.place),
                          {piece.PieceNumber},
                          fact.from ? numberCell(*fact.from) : Cell{},
                          {piece.Length},
                          {piece.sxB},
                          {piece.dxB},
                          {piece.BarCode},
                          {joined(works, "; ")},
                          {job::labelText(piece)},
                          numberCell(fact.at.line)});
  }
  return table;
}

/// A row with a column for each of its works.
TextTable spread(TextTable table, const PIECE_T& piece) {
  std::size_t column = 0;
  while (table.keys[column] != "works") ++column;
  const auto at = static_cast<std::ptrdiff_t>(column);
  table.keys.erase(table.keys.begin() + at);
  std::vector<Cell>& row = table.rows.front();
  row.erase(row.begin() + at);
  for (std::size_t i = piece.work.size(); i-- > 0;) {
    table.keys.insert(table.keys.begin() + at, "work " + std::to_string(i + 1));
    row.insert(row.begin() + at, {job::workText(piece.work[i])});
  }
  return table;
}

Json::Value worksValue(const PIECE_T& piece) {
  Json::Value works(Json::arrayValue);
  for (const WORK_T& work : piece.work) works.append(job::workValue(work));
  return works;
}

Json::Value labelValue(const PIECE_T& piece) {
  Json::Value label(Json::objectValue);
  label["mark"] = asUtf8(piece.mark);
  for (const auto& row : json_keys::kLabelFields) {
    label[row.spelling] = asUtf8(piece.Fields.*row.field);
  }
  return label;
}

}  // namespace

std::vector<PieceFact> piecesOf(const job::TracedJob& job, const job::Selection& selection) {
  std::vector<PieceFact> pieces;
  for (std::size_t i = 0; i < job.job.Bar.size(); ++i) {
    const BAR_T& one = job.job.Bar[i];
    if (!selection.has(one)) continue;
    const job::BarPlace places = job::layOut(one);
    for (std::size_t k = 0; k < one.piece.size(); ++k) {
      if (!selection.has(one.piece[k])) continue;
      const job::PiecePlace& piece = places.pieces[k];
      pieces.push_back({&one, &one.piece[k], static_cast<int>(k) + 1,
                        piece.isStartKnown ? std::optional(piece.start) : std::nullopt,
                        job.bars[i].pieces[k].place.at});
    }
  }
  return pieces;
}

std::string piecesText(const std::vector<PieceFact>& pieces, const Terminal& terminal) {
  const TextTable table = tableOf(pieces);
  if (pieces.size() == 1) {
    return recordText(spread(table, *pieces.front().piece), 0, false, terminal);
  }
  return tableText(table, false, terminal, TooWide::Folded);
}

std::string piecesCsv(const std::vector<PieceFact>& pieces) {
  return csvText(tableOf(pieces), false);
}

std::string piecesJson(const std::vector<PieceFact>& pieces) {
  const TextTable table = tableOf(pieces);
  std::vector<std::string> order;
  for (const auto& key : json_keys::kWork) order.emplace_back(key.spelling);
  for (const auto& row : json_keys::kLabelFields) order.emplace_back(row.spelling);
  const auto rowOf = [&](std::size_t i) {
    Json::Value row = jsonRow(table, i, false);
    row["works"] = worksValue(*pieces[i].piece);
    row["label"] = labelValue(*pieces[i].piece);
    return row;
  };
  return jsonArray(pieces.size(), rowOf, order);
}

}  // namespace desk::show
