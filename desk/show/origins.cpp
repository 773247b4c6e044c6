#include "desk/show/origins.h"

#include <algorithm>
#include <stdexcept>

#include "desk/show/origin_rows.h"

namespace desk::show {

namespace {

std::vector<Row> rowsFor(const Question& question, const OriginRows& job, std::size_t count) {
  switch (question.subject) {
    case Subject::Bars:
      return job.bars(question.bar);
    case Subject::Works:
      return job.works(question.barCode);
    case Subject::Cuts:
      return job.cuts(question.bar);
    case Subject::Holes:
      return job.holes();
    case Subject::Labels:
      return job.labels();
    case Subject::Dimensions:
      break;
  }
  return job.dimensions(question.barCode, count);
}

}  // namespace

void addOrigins(Table& table, const Question& question, const job::TracedJob& job, bool isXml) {
  const std::vector<Row> rows = rowsFor(question, OriginRows(job, isXml), table.rows.size());
  const auto disagrees = [](const Cell& a, const Cell& b) { return a.text != b.text; };
  bool agree = rows.size() == table.rows.size();
  for (std::size_t i = 0; agree && i < rows.size(); ++i) {
    std::vector<Cell>& row = table.rows[i];
    agree =
        rows[i].size() == row.size() &&
        std::mismatch(row.begin(), row.end(), rows[i].begin(), [&](const Cell& a, const Cell& b) {
          return !disagrees(a, b);
        }).first == row.end();
    for (std::size_t k = 0; agree && k < row.size(); ++k) row[k].origin = rows[i][k].origin;
  }
  if (!agree) throw std::logic_error("show: origins and rows disagree; this is a fault of cusdesk");
}

}  // namespace desk::show
