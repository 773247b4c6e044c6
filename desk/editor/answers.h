// Which values of scripts show a field of a job, found out by asking the row makers.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "model/job_format.h"
#include "model/job_records.h"

namespace desk::editor {

/// A job of one bar, one piece and one work, and which row values view which of its fields. Copies
/// would view fields of the original.
class Answers {
 public:
  explicit Answers(model::JobFormat format);
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  /// The values that show a field of one of these records, such as "get_cut BarName", in the order
  /// of the queries.
  template <class Record, class Value>
  std::vector<std::string> of(Value Record::*field) const {
    return viewing(&(recordOf(static_cast<const Record*>(nullptr)).*field));
  }

 private:
  const DATA_T& recordOf(const DATA_T*) const { return job_; }
  const BAR_T& recordOf(const BAR_T*) const { return job_.Bar[0]; }
  const PIECE_CHILD_SECOND_T& recordOf(const PIECE_CHILD_SECOND_T*) const {
    return job_.Bar[0].piece[0];
  }
  const CUT_T& recordOf(const CUT_T*) const { return cut_; }
  const WORK_T& recordOf(const WORK_T*) const { return job_.Bar[0].piece[0].work[0]; }

  std::vector<std::string> viewing(const void* value) const;

  DATA_T job_;
  CUT_T cut_;  ///< stands for the three fields of the piece that hold its cut
  std::map<const void*, std::vector<std::string>> views_;
};

}  // namespace desk::editor
