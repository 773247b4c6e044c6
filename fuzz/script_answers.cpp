#include "fuzz/script_answers.h"

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "module/job_rows.h"
#include "module/readers.h"

namespace fuzzing {
namespace {

/// Takes rows as text, a line each.
struct TextSink {
  std::string text;

  template <class Row>
  void operator()(const Row& row) {
    script_rows::forEachValue(row, [&](const char*, const row_keys::Value& value) {
      text += value.text == nullptr ? textOf(value.number) : textOf(std::string(value.text));
    });
    text += "\n";
  }
  void unknown(const std::string&) {}
  void startAnew() { text.clear(); }
};

/// The text of the rows that `make(job, sink)` makes of the current job, if there is one.
template <class Make>
std::string rowsOfCurrent(Make make) {
  TextSink sink;
  if (const DATA_T* const job = currentJob()) make(*job, sink);
  return sink.text;
}

std::string works(const std::string& barCode) {
  return rowsOfCurrent(
      [&](const DATA_T& job, TextSink& sink) { job_rows::works(job, barCode, sink); });
}

std::string cuts(const std::string& barNumber) {
  TextSink sink;
  job_rows::Cuts(currentJob(), barNumber, json).forEach(sink);
  return sink.text;
}

std::string holes(const std::string&) {
  std::vector<model::HoleRow> found;
  TextSink sink;
  if (currentJob() == &json.data) model::collectHoles(json.data, found, json.holeList);
  model::forEachHole(found, sink);
  return sink.text;
}

std::string labels(const std::string&) {
  return rowsOfCurrent([](const DATA_T& job, TextSink& sink) { model::forEachLabel(job, sink); });
}

std::string dimensions(const std::string& barCode) {
  return rowsOfCurrent(
      [&](const DATA_T& job, TextSink& sink) { job_rows::dimensions(job, barCode, sink); });
}

template <class Row>
std::vector<std::string> keysOf(std::size_t leftOut = 0) {
  std::vector<std::string> names;
  for (const auto& key : script_rows::KeysOf<Row>::keys) names.emplace_back(key.key);
  names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(leftOut));
  return names;
}

}  // namespace

const std::vector<Query>& queries() {
  using namespace script_rows;
  static const std::vector<Query> all = {
      {'A', "get_work", true, kNone, keysOf<Work>(), works},
      {'W', "get_work", true, kNone, keysOf<Work>(KeysOf<Work>::optional), works},
      {'C', "get_cut", true, kStoi, keysOf<Cut>(), cuts},
      {'H', "get_hole", false, kStod, keysOf<Hole>(), holes},
      {'P', "get_print", false, kNone, keysOf<Label>(), labels},
      {'D', "get_Dimensions", true, kNone, keysOf<Dimensions>(), dimensions},
  };
  return all;
}

}  // namespace fuzzing
