#include "desk/show/pieces.h"

#include <iterator>

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/job/bar_layout.h"
#include "desk/job/piece_text.h"

namespace desk::show {

namespace {

std::string worksText(const PIECE_T& piece) {
  std::vector<std::string> works;
  for (const WORK_T& work : piece.work) works.push_back(job::workText(work));
  return joined(works, "; ");
}

/// A column of the table. Either a text of the job or a cell made of the piece.
struct PieceColumn {
  const char* name;
  const char* about;
  const std::string& (*text)(const PieceFact&);
  Cell (*cell)(const PieceFact&);
};

constexpr PieceColumn kColumns[] = {
    {"bar", "number of the bar",
     [](const PieceFact& fact) -> const std::string& { return fact.bar->BarNumber; }, nullptr},
    {"place", "among the bar's pieces, from 1", nullptr,
     [](const PieceFact& fact) { return numberCell(fact.place); }},
    {"piece", "number of the piece",
     [](const PieceFact& fact) -> const std::string& { return fact.piece->PieceNumber; }, nullptr},
    {"from", "where it begins on the bar; empty behind a piece whose length is not known", nullptr,
     [](const PieceFact& fact) { return fact.from ? numberCell(*fact.from) : Cell{}; }},
    {"length", "length of the piece",
     [](const PieceFact& fact) -> const std::string& { return fact.piece->Length; }, nullptr},
    {"left", "angle of the left end, degrees",
     [](const PieceFact& fact) -> const std::string& { return fact.piece->sxB; }, nullptr},
    {"right", "angle of the right end, degrees",
     [](const PieceFact& fact) -> const std::string& { return fact.piece->dxB; }, nullptr},
    {"barcode", "barcode of the piece",
     [](const PieceFact& fact) -> const std::string& { return fact.piece->BarCode; }, nullptr},
    {"works", "its works: name, side, position along, across and in height", nullptr,
     [](const PieceFact& fact) { return Cell{worksText(*fact.piece)}; }},
    {"label", "what is printed on its label", nullptr,
     [](const PieceFact& fact) { return Cell{job::labelText(*fact.piece)}; }},
    {"line", "where it begins in the file", nullptr,
     [](const PieceFact& fact) { return numberCell(fact.at.line); }},
};

PieceFact factOf(const job::BarPlace& bar, std::size_t index, const job::BarTrace& trace) {
  const job::PiecePlace& piece = bar.pieces[index];
  return {bar.bar, piece.piece, static_cast<int>(index) + 1,
          piece.isStartKnown ? std::optional(piece.start) : std::nullopt,
          trace.pieces[index].place.at};
}

TextTable tableOf(const std::vector<PieceFact>& pieces) {
  TextTable table;
  for (const PieceColumn& column : kColumns) table.keys.emplace_back(column.name);
  for (const PieceFact& fact : pieces) table.rows.push_back(rowOf(fact));
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
      if (selection.has(one.piece[k])) pieces.push_back(factOf(places, k, job.bars[i]));
    }
  }
  return pieces;
}

PieceFact pieceAt(const job::TracedJob& job, const job::Element& element) {
  const auto bar = static_cast<std::size_t>(element.bar - 1);
  return factOf(job::layOut(job.job.Bar[bar]), static_cast<std::size_t>(element.piece - 1),
                job.bars[bar]);
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

std::vector<Column> pieceColumns() {
  std::vector<Column> columns;
  for (const PieceColumn& column : kColumns) columns.push_back({column.name, column.about});
  return columns;
}

std::vector<Cell> rowOf(const PieceFact& fact, const Origins* origins) {
  std::vector<Cell> row;
  row.reserve(std::size(kColumns));
  for (const PieceColumn& column : kColumns) {
    row.push_back(column.text == nullptr ? column.cell(fact) : Cell{column.text(fact)});
    if (column.text == nullptr || origins == nullptr) continue;
    row.back().origin = origins->of(&column.text(fact));
  }
  return row;
}

Json::Value pieceValue(const PieceFact& fact) {
  Json::Value value = jsonRow(tableOf({fact}), 0, false);
  value["works"] = worksValue(*fact.piece);
  value["label"] = labelValue(*fact.piece);
  return value;
}

std::vector<std::string> pieceOrder() {
  std::vector<std::string> order;
  for (const auto& key : json_keys::kWork) order.emplace_back(key.spelling);
  for (const auto& row : json_keys::kLabelFields) order.emplace_back(row.spelling);
  return order;
}

std::string piecesJson(const std::vector<PieceFact>& pieces) {
  return jsonArray(
      pieces.size(), [&](std::size_t i) { return pieceValue(pieces[i]); }, pieceOrder());
}

}  // namespace desk::show
