#include "desk/show/origins.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

#include "desk/base/numbers.h"
#include "desk/show/script_answers.h"
#include "module/job_rows.h"

namespace desk::show {

namespace {

using job::Element;
using job::fieldOf;
using job::OriginId;
using model::KeyKind;

/// The origins of a job's values by the addresses of the values.
class Origins {
 public:
  /// @param records  equal to the job's, and there as long as values are asked for
  Origins(const job::TracedJob& job, const DATA_T& records) : job_(job) {
    Element here;
    for (const BAR_T& bar : records.Bar)
      addBar(bar, job.bars[static_cast<std::size_t>(here.bar++)], here);
  }

  /// Empty for what stands in no file.
  Source of(const void* value) const {
    const auto found = values_.find(value);
    if (found == values_.end() || found->second.id == 0) return {};
    const job::Origin& origin = job_.origins[found->second.id];
    return {origin.place.at.line, origin.place.at.column, !(origin.element == found->second.here),
            describe(origin.element)};
  }

 private:
  struct Known {
    OriginId id;
    Element here;  ///< whose value it is
  };

  void addBar(const BAR_T& bar, const job::BarTrace& trace, Element here) {
    addFields(bar, trace.keys, here);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      addPiece(piece, trace.pieces[static_cast<std::size_t>(here.piece++)], here);
    }
  }

  void addPiece(const PIECE_CHILD_SECOND_T& piece, const job::PieceTrace& trace, Element here) {
    addFields(piece, trace.keys, here);
    values_[&piece.Length] = {trace.cut[fieldOf<CUT_T>(&CUT_T::Length)], here};
    values_[&piece.sxB] = {trace.cut[fieldOf<CUT_T>(&CUT_T::sxB)], here};
    values_[&piece.dxB] = {trace.cut[fieldOf<CUT_T>(&CUT_T::dxB)], here};
    for (const WORK_T& work : piece.work) {
      const job::WorkTrace& traced = trace.works[static_cast<std::size_t>(here.work++)];
      addFields(work, traced.keys, here);
    }
  }

  template <class Record>
  void addFields(const Record& record, const job::Trace<Record>& trace, const Element& here) {
    for (std::size_t i = 0; i < trace.size(); ++i) {
      const model::Key<Record>& key = job::FieldsOf<Record>::keys[i];
      if (key.kind == KeyKind::Text || key.kind == KeyKind::IntegerText) {
        values_[&(record.*key.field.text)] = {trace[i], here};
      } else if (key.kind == KeyKind::Integer || key.kind == KeyKind::Number) {
        values_[&(record.*key.field.number)] = {trace[i], here};
      }
    }
  }

  const job::TracedJob& job_;
  std::unordered_map<const void*, Known> values_;
};

/// Takes the rows of a query as a table.
class TableSink {
 public:
  TableSink(TextTable& table, const Origins& origins) : table_(table), origins_(origins) {}

  template <class Row>
  void operator()(const Row& row) {
    std::vector<Cell>& cells = table_.rows.emplace_back();
    script_rows::forEachValue(row, [&](const char*, const row_keys::Value& value) {
      const bool isNumber = value.text == nullptr;
      cells.push_back({isNumber ? shortestText(value.number) : value.text, isNumber, value.number,
                       origins_.of(value.source)});
    });
  }

  void unknown(const std::string&) {}
  void startAnew() { table_.rows.clear(); }

 private:
  TextTable& table_;
  const Origins& origins_;
};

/// A job in a reader of its own, as after a load in a program that has just begun.
class LoadedJob {
 public:
  LoadedJob(const job::TracedJob& job, model::JobFormat format)
      : isJson_(format == model::JobFormat::Json), origins_(job, take(job)) {}

  TextTable rows(const Question& question) {
    TextTable table{keysOf(question), {}};
    TableSink sink(table, origins_);
    std::vector<model::HoleRow> holes;
    const DATA_T& job = isJson_ ? json_.data : otherJob_;
    switch (question.subject) {
      case Subject::Bars:
        return barsOf(rows({Subject::Cuts, "", ""}), rows({Subject::Labels, "", ""}));
      case Subject::Works:
        job_rows::works(job, question.barCode, sink);
        break;
      case Subject::Cuts:
        job_rows::Cuts(&job, question.bar, json_).forEach(sink);
        break;
      case Subject::Holes:
        if (isJson_) model::collectHoles(json_.data, holes, json_.holeList);
        model::forEachHole(holes, sink);
        break;
      case Subject::Labels:
        model::forEachLabel(job, sink);
        break;
      case Subject::Dimensions:
        job_rows::dimensions(job, question.barCode, sink);
        break;
    }
    return table;
  }

 private:
  const DATA_T& take(const job::TracedJob& job) {
    return (isJson_ ? json_.data : otherJob_) = job.job;
  }

  bool isJson_;
  JsonAnalysis json_;
  DATA_T otherJob_;  ///< of a format whose reader adds nothing to the rows
  Origins origins_;
};

bool haveSameTexts(const std::vector<Cell>& a, const std::vector<Cell>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const Cell& x, const Cell& y) { return x.text == y.text; });
}

}  // namespace

void addOrigins(TextTable& table, const Question& question, const job::TracedJob& job,
                model::JobFormat format) {
  TextTable made = LoadedJob(job, format).rows(question);
  if (!std::equal(made.rows.begin(), made.rows.end(), table.rows.begin(), table.rows.end(),
                  haveSameTexts)) {
    throw std::logic_error("show: the plug-in answers with other rows than this cusdesk knows");
  }
  table = std::move(made);
}

}  // namespace desk::show
