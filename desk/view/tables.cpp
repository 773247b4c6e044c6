#include "desk/view/tables.h"

#include <algorithm>
#include <iterator>

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/show/answers.h"

namespace desk::view {

namespace {

using show::JobRow;
using show::Subject;
using show::TableRow;

const TableRow& tableNamed(const std::string& name) {
  const auto isIt = [&](const TableRow& table) {
    return table.name == name && table.subject != Subject::Dimensions;
  };
  const auto found = std::find_if(std::begin(show::kTables), std::end(show::kTables), isIt);
  if (found == std::end(show::kTables)) throw Refusal(404, "there is no such table");
  return *found;
}

Json::Value columnValues(const TableRow& table) {
  Json::Value values(Json::arrayValue);
  for (const show::Column& column :
       table.isPieces ? show::pieceColumns() : show::columnsOf({table.subject, "", ""})) {
    Json::Value value;
    value["name"] = column.name;
    value["about"] = column.about;
    values.append(value);
  }
  return values;
}

void append(Json::Value& document, const JobRow& row) {
  Json::Value cells(Json::arrayValue);
  Json::Value origins(Json::arrayValue);
  for (const Cell& cell : row.cells) {
    cells.append(asUtf8(cell.text));
    origins.append(originValue(cell.origin));
  }
  document["cells"].append(std::move(cells));
  document["origins"].append(std::move(origins));
  document["ids"].append(idOf(row.element));
}

}  // namespace

Tables::Tables(check::CheckSession& checked)
    : rows_(checked), origins_(checked.job()), pieces_(show::piecesOf(checked.job(), {})) {}

std::size_t Tables::forEach(const TableRow& table, const show::JobRows::Wants& wants,
                            const show::JobRows::Take& take) {
  if (!table.isPieces) return rows_.forEach({table.subject, "", ""}, wants, take);
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    if (!wants(i)) continue;
    take(i, {rowOf(pieces_[i], &origins_), origins_.elementOf(pieces_[i].piece)});
  }
  return pieces_.size();
}

std::string Tables::answer(const Query& query) {
  const TableRow& table = tableNamed(valueOf(query, "name"));
  const Window window = windowOf(query);
  Json::Value document;
  for (const char* list : {"cells", "origins", "ids"}) document[list] = Json::arrayValue;
  const std::size_t all = forEach(
      table, [&](std::size_t row) { return window.has(row); },
      [&](std::size_t, const JobRow& row) { append(document, row); });
  document["columns"] = columnValues(table);
  document["all"] = document["rows"] = Json::UInt64{all};
  document["from"] = Json::UInt64{window.from};
  return compactJson(document);
}

}  // namespace desk::view
