// Where the values of a job's rows come from.
#pragma once

#include <vector>

#include "desk/base/table.h"
#include "desk/job/traced_job.h"

namespace desk::show {

/// Finds a value of a job by its address. The job must outlive it and stay as it is.
class Origins {
 public:
  explicit Origins(const job::TracedJob& job);

  /// The element that holds the value; the header for what is no value of a bar, piece or work.
  job::Element elementOf(const void* value) const;

  /// Empty for what stands in no file.
  Source of(const void* value) const;

 private:
  /// The records of a level that lie one behind the other.
  struct Records {
    const char* begin;
    const char* end;
    std::size_t size;  ///< of one
    job::Level level;
    job::Element parent;
  };

  template <class Record>
  void add(const std::vector<Record>& records, job::Level level, const job::Element& parent);
  job::OriginId idOf(const void* value, const job::Element& here) const;

  const job::TracedJob& job_;
  std::vector<Records> records_;  ///< by address
};

}  // namespace desk::show
