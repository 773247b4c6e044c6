// The forms in which a summary of jobs is written.
#include <algorithm>

#include "desk/base/json_document.h"
#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/show/job_summary.h"

namespace desk::show {

namespace {

/// A table of the summary under the name that JSON and CSV know it by.
struct Part {
  const char* name;
  TextTable table;
};

std::vector<Part> partsOf(const JobSummary& summary) {
  return {{"jobs", summary.jobs()},
          {"total", summary.total()},
          {"stock", summary.stock()},
          {"material", summary.material()},
          {"leftovers", summary.leftovers()}};
}

TextTable without(TextTable table, const std::string& key) {
  const auto column = std::find(table.keys.begin(), table.keys.end(), key) - table.keys.begin();
  table.keys.erase(table.keys.begin() + column);
  for (auto& row : table.rows) row.erase(row.begin() + column);
  return table;
}

/// Puts the rows of `table` under the keys of `all`, which gets those that it lacks.
void append(TextTable& all, const Part& part) {
  for (const std::string& key : part.table.keys) {
    if (!contains(all.keys, key)) all.keys.push_back(key);
  }
  for (const auto& row : part.table.rows) {
    std::vector<Cell>& cells = all.rows.emplace_back(1, Cell{part.name});
    for (std::size_t i = 0; i < row.size(); ++i) {
      const auto key = std::find(all.keys.begin(), all.keys.end(), part.table.keys[i]);
      const auto column = static_cast<std::size_t>(key - all.keys.begin());
      if (cells.size() <= column) cells.resize(column + 1);
      cells[column] = row[i];
    }
  }
}

}  // namespace

std::string summaryText(const JobSummary& summary, const Terminal& terminal) {
  const auto section = [&](const std::string& title, const TextTable& table) {
    return "\n" + title +
           (table.rows.empty() ? ": none\n" : "\n\n" + tableText(table, false, terminal));
  };
  const auto shown = [&](TextTable table) {
    return summary.haveAllYield() ? without(std::move(table), kWithoutYield) : table;
  };
  const TextTable jobs = shown(summary.jobs());
  const bool isOne = jobs.rows.size() == 1;
  std::string text;
  if (isOne) {
    const std::string& file = jobs.rows[0][0].text;
    const std::string& name = jobs.rows[0][1].text;
    text = escapeControls(name.empty() ? file : name + " (" + file + ")") + "\n";
  } else {
    text = tableText(jobs, false, terminal) + "\nTogether\n";
  }
  TextTable total = summary.total();
  if (isOne) total = without(total, "files");
  text += recordText(shown(total), 0, false, terminal);
  text += section("Stock to fetch", summary.stock());
  text += section("Use of the stock", shown(summary.material()));
  const TextTable& leftovers = summary.leftovers();
  return text + section("Leftovers from " + hundredthsText(summary.keepFrom()) + " on",
                        isOne ? without(leftovers, "file") : leftovers);
}

std::string summaryCsv(const JobSummary& summary) {
  TextTable all{{"table"}, {}};
  for (const Part& part : partsOf(summary)) append(all, part);
  for (auto& row : all.rows) row.resize(all.keys.size());
  return csvText(all, false);
}

std::string summaryJson(const JobSummary& summary) {
  Json::Value root;
  std::vector<std::string> order;
  for (const Part& part : partsOf(summary)) {
    order.emplace_back(part.name);
    root[part.name] = jsonRows(part.table, false);
  }
  root["total"] = Json::Value(root["total"][0]);
  root["keepFrom"] = summary.keepFrom();
  return jsonDocument(root, order);
}

}  // namespace desk::show
