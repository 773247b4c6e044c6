#include "desk/show/job_rows.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "desk/base/numbers.h"
#include "desk/show/answers.h"
#include "module/job_rows.h"

namespace desk::show {

namespace {

int depthOf(const job::Element& element) {
  return element.work > 0 ? 3 : element.piece > 0 ? 2 : element.bar > 0 ? 1 : 0;
}

bool haveSameTexts(const std::vector<Cell>& a, const std::vector<Cell>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const Cell& x, const Cell& y) { return x.text == y.text; });
}

}  // namespace

/// Counts the rows of a query and hands over those that are wanted.
class JobRows::Sink {
 public:
  Sink(const Origins& origins, bool where, const Wants& wants, const Take& take)
      : origins_(origins), where_(where), wants_(wants), take_(take) {}

  template <class Row>
  void operator()(const Row& row) {
    const std::size_t number = count_++;
    if (!wants_(number)) return;
    JobRow made;
    script_rows::forEachValue(row, [&](const char*, const row_keys::Value& value) {
      const bool isNumber = value.text == nullptr;
      made.cells.push_back(
          {isNumber ? shortestText(value.number) : value.text, isNumber, value.number});
      if (where_) made.cells.back().origin = origins_.of(value.source);
      // The first of the innermost elements: a row also has values of others, as of its bar.
      const job::Element element = origins_.elementOf(value.source);
      if (depthOf(element) > depthOf(made.element)) made.element = element;
    });
    take_(number, std::move(made));
  }

  void unknown(const std::string&) {}
  void startAnew() { count_ = 0; }
  std::size_t count() const { return count_; }

 private:
  const Origins& origins_;
  bool where_;
  const Wants& wants_;
  const Take& take_;
  std::size_t count_ = 0;
};

std::size_t JobRows::forEach(const Question& question, bool where, const Wants& wants,
                             const Take& take) {
  if (question.subject == Subject::Bars) return forEachBar(where, wants, take);
  Sink sink(origins_, where, wants, take);
  try {
    make(question, sink);
  } catch (const std::logic_error& error) {
    throw Raised(commandFor(question.subject), error);
  }
  return sink.count();
}

void JobRows::make(const Question& question, Sink& sink) {
  std::vector<model::HoleRow> holes;
  switch (question.subject) {
    case Subject::Bars:
      break;
    case Subject::Works:
      return job_rows::works(job_.job, question.barCode, sink);
    case Subject::Cuts:
      return job_rows::Cuts(&job_.job, question.bar, reader_).forEach(sink);
    case Subject::Holes:
      // No other reader's job has holes.
      model::collectHoles(reader_.data, holes, reader_.holeList);
      return model::forEachHole(holes, sink);
    case Subject::Labels:
      return model::forEachLabel(job_.job, sink);
    case Subject::Dimensions:
      return job_rows::dimensions(job_.job, question.barCode, sink);
  }
}

std::size_t JobRows::forEachBar(bool where, const Wants& wants, const Take& take) {
  std::map<std::size_t, JobRow> cuts;  // the first one of each bar, by its number
  std::size_t next = 0;
  const auto isFirst = [&](std::size_t row) { return row == next; };
  forEach({Subject::Cuts, "", ""}, where, isFirst, [&](std::size_t row, JobRow cut) {
    next += piecesOn(cut.cells);
    cuts.emplace(row, std::move(cut));
  });
  auto cut = cuts.cbegin();
  std::size_t bar = 0;
  const auto isWanted = [&](std::size_t row) {
    if (cut == cuts.cend() || cut->first != row) return false;
    if (wants(bar++)) return true;
    ++cut;
    return false;
  };
  forEach({Subject::Labels, "", ""}, where, isWanted, [&](std::size_t, const JobRow& label) {
    take(bar - 1, {barRow(cut->second.cells, label.cells), {cut->second.element.bar}});
    ++cut;
  });
  return cuts.size();
}

void addOrigins(TextTable& table, const Question& question, check::CheckSession& checked) {
  std::vector<std::vector<Cell>> rows;
  const auto all = [](std::size_t) { return true; };
  rows.resize(JobRows(checked).forEach(question, true, all, [&](std::size_t row, JobRow made) {
    rows.resize(row);
    rows.push_back(std::move(made.cells));
  }));
  if (!std::equal(rows.begin(), rows.end(), table.rows.begin(), table.rows.end(), haveSameTexts)) {
    throw std::logic_error("show: the plug-in answers with other rows than this cusdesk knows");
  }
  table.rows = std::move(rows);
}

}  // namespace desk::show
