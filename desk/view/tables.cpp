#include "desk/view/tables.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

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

std::vector<show::Column> columnsOf(const TableRow& table) {
  return table.isPieces ? show::pieceColumns() : show::columnsOf({table.subject, "", ""});
}

Wish wishOf(const TableRow& table, const Query& query) {
  Wish wish{valueOf(query, "filter"), {}, std::nullopt, false};
  if (const std::string id = valueOf(query, "id"); !id.empty()) wish.within = elementOf(id);
  const std::string order = valueOf(query, "order");
  wish.isDown = order == "down";
  if (!order.empty() && order != "up" && !wish.isDown) throw Refusal(400, "no such order");
  const std::string name = valueOf(query, "sort");
  if (name.empty()) return wish;
  const std::vector<show::Column> columns = columnsOf(table);
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [&](const show::Column& one) { return one.name == name; });
  if (found == columns.end()) throw Refusal(400, "the table has no such column");
  wish.column = static_cast<std::size_t>(found - columns.begin());
  return wish;
}

Json::Value columnValues(const TableRow& table, const NumberColumns& numbers) {
  Json::Value values(Json::arrayValue);
  for (const show::Column& column : columnsOf(table)) {
    Json::Value value;
    value["name"] = column.name;
    value["kind"] = numbers.has(values.size()) ? "number" : "text";
    value["about"] = column.about;
    values.append(value);
  }
  return values;
}

}  // namespace

Tables::Tables(check::CheckSession& checked)
    : rows_(checked), origins_(checked.job()), pieces_(show::piecesOf(checked.job(), {})) {}

std::size_t Tables::forEach(const TableRow& table, bool where, const show::JobRows::Wants& wants,
                            const show::JobRows::Take& take) {
  if (!table.isPieces) return rows_.forEach({table.subject, "", ""}, where, wants, take);
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    if (!wants(i)) continue;
    take(i, {rowOf(pieces_[i], where ? &origins_ : nullptr), origins_.elementOf(pieces_[i].piece)});
  }
  return pieces_.size();
}

Tables::Ordered Tables::ordered(const TableRow& table, const Wish& wish) {
  Ordered one{&table, wish, 0, NumberColumns(columnsOf(table).size()), RowOrder(wish)};
  const auto every = [](std::size_t) { return true; };
  one.all = forEach(table, false, every, [&](std::size_t row, const JobRow& made) {
    one.numbers.add(made.cells);
    one.order.add(row, made.cells, made.element);
  });
  one.order.sort();
  return one;
}

void Tables::addRows(Json::Value& document, const Window& window) {
  std::unordered_map<std::size_t, Json::ArrayIndex> places;  // of the rows of the window
  const std::size_t size = last_->order.size();
  const std::size_t from = std::min(window.from, size);
  const std::size_t end = from + std::min(window.count, size - from);
  for (std::size_t i = from; i < end; ++i) {
    places.emplace(last_->order[i], static_cast<Json::ArrayIndex>(i - from));
  }
  for (const char* list : {"cells", "origins", "ids"}) {
    (document[list] = Json::arrayValue).resize(static_cast<Json::ArrayIndex>(end - from));
  }
  const auto isShown = [&](std::size_t row) { return places.count(row) > 0; };
  forEach(*last_->table, true, isShown, [&](std::size_t row, const JobRow& made) {
    const Json::ArrayIndex place = places.at(row);
    for (const Cell& cell : made.cells) {
      document["cells"][place].append(escapeControls(cell.text));
      document["origins"][place].append(originValue(cell.origin));
    }
    document["ids"][place] = idOf(made.element);
  });
}

std::string Tables::answer(const Query& query) {
  const TableRow& table = tableNamed(valueOf(query, "name"));
  const Wish wish = wishOf(table, query);
  const Window window = windowOf(query);
  if (!last_ || last_->table != &table || !(last_->wish == wish)) {
    last_.reset();
    last_.emplace(ordered(table, wish));
  }
  Json::Value document;
  addRows(document, window);
  document["columns"] = columnValues(table, last_->numbers);
  document["all"] = Json::UInt64{last_->all};
  document["rows"] = Json::UInt64{last_->order.size()};
  document["from"] = Json::UInt64{window.from};
  if (const std::string id = valueOf(query, "find"); !id.empty()) {
    const std::optional<std::size_t> found = last_->order.find(elementOf(id));
    document["found"] = found ? Json::Value(Json::UInt64{*found}) : Json::Value();
  }
  return compactJson(document);
}

}  // namespace desk::view
