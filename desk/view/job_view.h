// One version of a job as a page shows it: documents, each made by what the command of that name
// computes with. It knows no file, socket, terminal or thread.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "desk/job/source_text.h"

namespace desk::view {

/// What a document is asked for with, by name: "line", "sort" ...
using Query = std::map<std::string, std::string>;

struct Answer {
  unsigned status = 200;  ///< as of HTTP: 400 or 404 with a text that says what is wrong
  std::string body;       ///< UTF-8
  std::string type;       ///< of the body: "application/json"
};

/// A job is read, checked and kept, about as large as a panel holds it. Questions in turn are
/// quick; they keep the order of the last one, so that they must not be asked at the same time.
class JobView {
 public:
  /// @param name as the user gave it: its ending tells the format
  JobView(std::string name, const std::string& bytes);
  ~JobView();
  JobView(JobView&&) noexcept;
  JobView& operator=(JobView&&) noexcept;

  /// Whether a panel would load it. Of what does not load only findings and source are told.
  bool loads() const;

  /// Why not, in the words of the commands, and where the fault stands: line 0 where it has no
  /// place. Empty for what loads.
  std::string reason() const;
  job::Position reasonAt() const;

  /// What there is and what can be asked of it:
  ///   summary             as cusdesk show FILE --format json
  ///   cuts                as cusdesk show FILE cuts --format html
  ///   drawing             as cusdesk draw FILE -o -
  ///   bars                the bars as drawn, equal ones once, and the signs of the works
  ///   bar                 SVG of one of these: group
  ///   table               rows of a table: name, id, filter, sort, order, find, from, count
  ///   findings            what cusdesk check tells: severity, id, find, from, count
  ///   source              lines of the job, the first one around a column: line, column, count
  ///   piece               a piece as cusdesk show FILE pieces --format json tells it: id
  /// An id is "B", "B.P" or "B.P.W": bar, piece and work by their places, from 1.
  Answer answer(const std::string& what, const Query& query);

 private:
  class Answers;
  std::unique_ptr<Answers> answers_;
};

}  // namespace desk::view
