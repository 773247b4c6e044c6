#include "desk/editor/answers.h"

#include "json/json_analysis.h"
#include "json/json_keys.h"
#include "module/job_rows.h"

namespace desk::editor {

namespace {

using model::JobFormat;
using Views = std::map<const void*, std::vector<std::string>>;

/// Notes which values a query's rows view.
struct ViewSink {
  Views& views;
  const char* query;

  template <class Row>
  void operator()(const Row& row) {
    script_rows::forEachValue(row, [this](const char* key, const row_keys::Value& value) {
      if (value.source != nullptr) views[value.source].push_back(std::string(query) + " " + key);
    });
  }
  void unknown(const std::string&) {}
  void startAnew() {}
};

/// A job that every query answers from: numbers where some are converted.
DATA_T sampleJob() {
  PIECE_CHILD_SECOND_T piece;
  piece.Length = "1";
  piece.work.emplace_back().Name = "work";
  BAR_T bar;
  bar.BarNumber = bar.MaxY = bar.MaxZ = "1";
  bar.piece.push_back(std::move(piece));
  DATA_T job;
  job.Version = json_keys::kVersion;
  job.Bar.push_back(std::move(bar));
  return job;
}

}  // namespace

Answers::Answers(JobFormat format) : job_(sampleJob()) {
  // The JSON reader answers for its own job; for another it adds what it holds, here nothing.
  JsonAnalysis reader;
  const bool isJson = format == JobFormat::Json;
  if (isJson) reader.data.Bar.swap(job_.Bar);
  if (isJson) reader.data.Version = job_.Version;
  const DATA_T& job = isJson ? reader.data : job_;

  job_rows::works(job, "", ViewSink{views_, "get_work"});
  job_rows::dimensions(job, "", ViewSink{views_, "get_Dimensions"});
  job_rows::Cuts(&job, "", reader).forEach(ViewSink{views_, "get_cut"});
  if (isJson) {
    std::vector<model::HoleRow> holes;
    model::collectHoles(job, holes, reader.holeList);
    model::forEachHole(holes, ViewSink{views_, "get_hole"});
  }
  model::forEachLabel(job, ViewSink{views_, "get_print"});

  if (isJson) reader.data.Bar.swap(job_.Bar);
  const PIECE_T& piece = job_.Bar[0].piece[0];
  views_[&cut_.Length] = viewing(&piece.Length);
  views_[&cut_.sxB] = viewing(&piece.sxB);
  views_[&cut_.dxB] = viewing(&piece.dxB);
}

std::vector<std::string> Answers::viewing(const void* value) const {
  const auto found = views_.find(value);
  return found == views_.end() ? std::vector<std::string>() : found->second;
}

}  // namespace desk::editor
