#include "desk/show/answers.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "module/script_rows.h"

namespace desk::show {

namespace {

template <class Row>
std::vector<Column> columnsOf(std::size_t leftOut = 0) {
  std::vector<Column> columns;
  const auto& keys = script_rows::KeysOf<Row>::keys;
  for (std::size_t i = leftOut; i < std::size(keys); ++i) {
    columns.push_back({keys[i].key, keys[i].note});
  }
  return columns;
}

// What a bar's row takes from the first cut and the first label of the bar.
const std::vector<std::string> kFromCut = {"BarNumber", "BarName", "Length", "CutNumBer"};
const std::vector<std::string> kFromLabel = {"sProfileName", "sColor", "sLengthProduct"};

/// Appends what stands in the columns of these names.
template <class Value>
void pick(std::vector<Value>& picked, const std::vector<Value>& row,
          const std::vector<Column>& columns, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    const auto isIt = [&](const Column& column) { return column.name == name; };
    const auto found = std::find_if(columns.begin(), columns.end(), isIt);
    picked.push_back(row.at(static_cast<std::size_t>(found - columns.begin())));
  }
}

/// The row of a bar, of cells or of columns.
template <class Value>
std::vector<Value> ofBar(const std::vector<Value>& cut, const std::vector<Value>& label) {
  static const std::vector<Column> kCuts = columnsOf<script_rows::Cut>();
  static const std::vector<Column> kLabels = columnsOf<script_rows::Label>();
  std::vector<Value> row;
  row.reserve(kFromCut.size() + kFromLabel.size());
  pick(row, cut, kCuts, kFromCut);
  pick(row, label, kLabels, kFromLabel);
  return row;
}

}  // namespace

const char* commandFor(Subject subject) {
  switch (subject) {
    case Subject::Bars:
    case Subject::Cuts:
      return "get_cut";
    case Subject::Works:
      return "get_work";
    case Subject::Holes:
      return "get_hole";
    case Subject::Labels:
      return "get_print";
    case Subject::Dimensions:
      break;
  }
  return "get_Dimensions";
}

std::vector<Column> columnsOf(const Question& question) {
  using namespace script_rows;
  switch (question.subject) {
    case Subject::Bars:
      return ofBar(columnsOf<Cut>(), columnsOf<Label>());
    case Subject::Works:
      return columnsOf<Work>(question.barCode.empty() ? 0 : KeysOf<Work>::optional);
    case Subject::Cuts:
      return columnsOf<Cut>();
    case Subject::Holes:
      return columnsOf<Hole>();
    case Subject::Labels:
      return columnsOf<Label>();
    case Subject::Dimensions:
      break;
  }
  return columnsOf<Dimensions>();
}

std::vector<std::string> keysOf(const Question& question) {
  std::vector<std::string> keys;
  for (const Column& column : columnsOf(question)) keys.push_back(column.name);
  return keys;
}

std::size_t piecesOn(const std::vector<Cell>& cut) {
  static const std::vector<Column> kCuts = columnsOf<script_rows::Cut>();
  std::vector<Cell> count;
  pick(count, cut, kCuts, {"CutNumBer"});
  return std::strtoul(count.front().text.c_str(), nullptr, 10);
}

std::vector<Cell> barRow(const std::vector<Cell>& cut, const std::vector<Cell>& label) {
  return ofBar(cut, label);
}

TextTable barsOf(const TextTable& cuts, const TextTable& labels) {
  TextTable table{keysOf({Subject::Bars, "", ""}), {}};
  // Cuts and labels come in the same order, one of each per piece.
  for (std::size_t i = 0; i < cuts.rows.size(); i += piecesOn(cuts.rows[i])) {
    table.rows.push_back(barRow(cuts.rows[i], labels.rows.at(i)));
  }
  return table;
}

}  // namespace desk::show
