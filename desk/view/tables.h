// The tables of a job, a window at a time.
#pragma once

#include <string>
#include <vector>

#include "desk/check/check_session.h"
#include "desk/show/job_rows.h"
#include "desk/show/pieces.h"
#include "desk/view/query.h"

namespace desk::view {

/// Rows are made when they are asked for: a job of many pieces would fill tens of megabytes of
/// them.
class Tables {
 public:
  /// @param checked of a job that loads; it must outlive this and check no other
  explicit Tables(check::CheckSession& checked);

  /// The document of a window. Throws Refusal for another table, and show::Raised where the script
  /// command raises.
  std::string answer(const Query& query);

 private:
  /// Hands over the rows that are wanted; returns how many there are.
  std::size_t forEach(const show::TableRow& table, const show::JobRows::Wants& wants,
                      const show::JobRows::Take& take);

  show::JobRows rows_;
  show::Origins origins_;
  std::vector<show::PieceFact> pieces_;
};

}  // namespace desk::view
