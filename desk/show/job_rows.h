// The rows that scripts get for a job, made without the plug-in, and where their values come from.
#pragma once

#include <functional>
#include <vector>

#include "desk/base/table.h"
#include "desk/check/check_session.h"
#include "desk/show/origins.h"
#include "desk/show/question.h"

namespace desk::show {

/// A row and the element of the job that it is about.
struct JobRow {
  std::vector<Cell> cells;  ///< in the order of columnsOf
  job::Element element;
};

class JobRows {
 public:
  /// @param checked has checked a file that loads; it must outlive this and check no other
  explicit JobRows(check::CheckSession& checked)
      : job_(checked.job()), reader_(checked.jsonReader()), origins_(job_) {}

  using Wants = std::function<bool(std::size_t row)>;
  using Take = std::function<void(std::size_t row, JobRow made)>;

  /// Hands over the rows that are wanted of the answer to a question of the panel, in their order.
  /// @param where whether their cells get their origins
  /// @return how many rows the answer has: those handed over from that number on are not in it
  /// Throws Raised where the script command raises.
  std::size_t forEach(const Question& question, bool where, const Wants& wants, const Take& take);

 private:
  class Sink;

  void make(const Question& question, Sink& sink);
  std::size_t forEachBar(bool where, const Wants& wants, const Take& take);

  const job::TracedJob& job_;
  JsonAnalysis& reader_;
  Origins origins_;
};

/// Sets the origins of the cells of an answer: the rows are made again.
/// @param checked has checked the file that the plug-in answered from
/// Throws std::logic_error when the plug-in that answered makes other rows.
void addOrigins(TextTable& table, const Question& question, check::CheckSession& checked);

}  // namespace desk::show
