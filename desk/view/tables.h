// The tables of a job, a window at a time.
#pragma once

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "desk/check/check_session.h"
#include "desk/show/job_rows.h"
#include "desk/show/pieces.h"
#include "desk/view/query.h"
#include "desk/view/row_order.h"

namespace desk::view {

/// Rows are made when they are asked for: a job of many pieces would fill tens of megabytes of
/// them. Kept is the order of the last question.
class Tables {
 public:
  /// @param checked of a job that loads; it must outlive this and check no other
  explicit Tables(check::CheckSession& checked);

  /// The document of a window. Throws Refusal for what no table has, and show::Raised where the
  /// script command raises.
  std::string answer(const Query& query);

 private:
  /// A table as it was asked for last.
  struct Ordered {
    const show::TableRow* table;
    Wish wish;
    std::size_t all;  ///< its rows, with those that do not pass the filter
    NumberColumns numbers;
    RowOrder order;
  };

  /// Hands over the rows that are wanted; returns how many there are.
  std::size_t forEach(const show::TableRow& table, bool where, const show::JobRows::Wants& wants,
                      const show::JobRows::Take& take);
  Ordered ordered(const show::TableRow& table, const Wish& wish);
  void addRows(Json::Value& document, const Window& window);

  show::JobRows rows_;
  show::Origins origins_;
  std::vector<show::PieceFact> pieces_;
  std::optional<Ordered> last_;
};

}  // namespace desk::view
