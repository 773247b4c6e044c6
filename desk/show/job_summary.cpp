#include "desk/show/job_summary.h"

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/check/reports.h"

namespace desk::show {

namespace {

Cell countCell(std::size_t count) {
  return numberCell(static_cast<double>(count));
}

Cell yieldCell(const job::Yield& yield) {
  return {yield.text(), yield.length > 0.0, yield.percent()};
}

}  // namespace

bool JobSummary::Name::operator<(const Name& other) const {
  return comparedByPeople(text, other.text) < 0;
}

void JobSummary::Counts::add(const Counts& other) {
  bars += other.bars;
  withoutYield += other.withoutYield;
  pieces += other.pieces;
  works += other.works;
  yield.add(other.yield);
  kept += other.kept;
  findings.errors += other.findings.errors;
  findings.warnings += other.findings.warnings;
  findings.notes += other.findings.notes;
}

void JobSummary::add(const std::string& file, const DATA_T& job, const FindingCounts& findings) {
  Counts counts;
  counts.findings = findings;
  for (const BAR_T& bar : job.Bar) {
    const Material material{{bar.DXF_Name}, {bar.BarName}, {bar.BarColor}};
    const job::BarPlace place = job::layOut(bar);
    const Counts one = countsOf(place);
    counts.add(one);
    material_[material].add(one);
    ++stock_[place.isLengthKnown ? std::tuple{material, -place.length, std::string()}
                                 : std::tuple{material, 0.0, bar.length}];
    for (const PIECE_T& piece : bar.piece) {
      cuts_.insert({material, piece.Length, piece.sxB, piece.dxB});
    }
    if (one.kept > 0.0) {
      leftovers_.rows.push_back({{file},
                                 {bar.BarNumber},
                                 {bar.DXF_Name},
                                 {bar.BarName},
                                 {bar.BarColor},
                                 numberCell(one.kept)});
    }
  }
  jobs_.push_back({file, job.Name, counts});
}

void JobSummary::add(const check::CheckSession& checked) {
  const check::Report& report = checked.report();
  const auto count = [&](check::Severity severity) { return countOf(report, severity); };
  add(report.sources.back()->name(), checked.job().job,
      {count(check::Severity::Error), count(check::Severity::Warning),
       count(check::Severity::Note)});
}

JobSummary::Counts JobSummary::countsOf(const job::BarPlace& bar) const {
  Counts counts;
  counts.bars = 1;
  counts.withoutYield = counts.yield.add(bar) ? 0 : 1;
  counts.pieces = bar.pieces.size();
  for (const PIECE_T& piece : bar.bar->piece) counts.works += piece.work.size();
  const double left = job::certainLeftOver(bar);
  if (left >= keepFrom_) counts.kept = left;
  return counts;
}

TextTable JobSummary::jobs() const {
  TextTable table{{"file", "job", "bars", kWithoutYield, "pieces", "works", "yield", "errors",
                   "warnings", "notes"},
                  {}};
  for (const Job& job : jobs_) {
    const Counts& counts = job.counts;
    table.rows.push_back({{job.file},
                          {job.name},
                          countCell(counts.bars),
                          countCell(counts.withoutYield),
                          countCell(counts.pieces),
                          countCell(counts.works),
                          yieldCell(counts.yield),
                          countCell(counts.findings.errors),
                          countCell(counts.findings.warnings),
                          countCell(counts.findings.notes)});
  }
  return table;
}

JobSummary::Counts JobSummary::sum() const {
  Counts sum;
  for (const Job& job : jobs_) sum.add(job.counts);
  return sum;
}

TextTable JobSummary::total() const {
  const Counts sum = this->sum();
  return {
      {"files", "bars", kWithoutYield, "pieces", "cuts", "different cuts", "works", "length",
       "used", "kept", "wasted", "yield", "errors", "warnings", "notes"},
      {{countCell(jobs_.size()), countCell(sum.bars), countCell(sum.withoutYield),
        countCell(sum.pieces), countCell(sum.pieces), countCell(cuts_.size()), countCell(sum.works),
        numberCell(sum.yield.length), numberCell(sum.yield.used), numberCell(sum.kept),
        numberCell(sum.wasted()), yieldCell(sum.yield), countCell(sum.findings.errors),
        countCell(sum.findings.warnings), countCell(sum.findings.notes)}}};
}

TextTable JobSummary::stock() const {
  TextTable table{{"profile", "name", "colour", "length", "bars"}, {}};
  for (const auto& [kind, count] : stock_) {
    const auto& [material, minus, text] = kind;
    const auto& [profile, name, colour] = material;
    const Cell length = minus < 0.0 ? numberCell(-minus) : Cell{text};
    table.rows.push_back({{profile.text}, {name.text}, {colour.text}, length, countCell(count)});
  }
  return table;
}

TextTable JobSummary::material() const {
  TextTable table{{"profile", "name", "colour", "bars", kWithoutYield, "length", "used", "kept",
                   "wasted", "yield"},
                  {}};
  for (const auto& [material, counts] : material_) {
    const auto& [profile, name, colour] = material;
    table.rows.push_back({{profile.text},
                          {name.text},
                          {colour.text},
                          countCell(counts.bars),
                          countCell(counts.withoutYield),
                          numberCell(counts.yield.length),
                          numberCell(counts.yield.used),
                          numberCell(counts.kept),
                          numberCell(counts.wasted()),
                          yieldCell(counts.yield)});
  }
  return table;
}

}  // namespace desk::show
