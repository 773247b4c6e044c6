// What jobs come to: how much there is to cut, which bars to fetch for it, what is left of them.
//
// Lengths and yield are those of the drawings: pieces lie end to end, and a bar whose pieces do not
// fit, or where a length is no plain number, counts for none.
#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "desk/base/table.h"
#include "desk/check/check_session.h"
#include "desk/job/yield.h"
#include "model/job_records.h"

namespace desk::show {

/// What a check found in a job, by severity.
struct FindingCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;
};

/// How long a leftover has to be to be worth keeping, mm, unless somebody says otherwise.
inline constexpr double kKeepFrom = 500.0;

/// The column for how many bars count for no length and no yield.
inline constexpr const char* kWithoutYield = "without yield";

/// Sums up jobs, one after the other.
class JobSummary {
 public:
  /// @param keepFrom how long a leftover has to be to be worth keeping
  explicit JobSummary(double keepFrom = kKeepFrom) : keepFrom_(keepFrom) {}

  /// @param file what messages call the job's file
  void add(const std::string& file, const DATA_T& job, const FindingCounts& findings);

  /// Adds the last file that was checked, with all that was found.
  void add(const check::CheckSession& checked);

  double keepFrom() const { return keepFrom_; }

  /// Whether every bar counts for the yield.
  bool haveAllYield() const { return sum().withoutYield == 0; }

  /// One row for each job.
  TextTable jobs() const;
  /// One row for all of them.
  TextTable total() const;
  /// The bars to fetch, by profile, colour and length.
  TextTable stock() const;
  /// What becomes of their length, by profile and colour. What is neither used nor kept is wasted,
  /// and that is also what the saw takes.
  TextTable material() const;
  /// The leftovers worth keeping, bar by bar.
  const TextTable& leftovers() const { return leftovers_; }

 private:
  struct Counts {
    std::size_t bars = 0;
    std::size_t withoutYield = 0;  ///< of the bars
    std::size_t pieces = 0;
    std::size_t works = 0;
    job::Yield yield;
    double kept = 0.0;
    FindingCounts findings;

    void add(const Counts& other);
    double wasted() const { return yield.length - yield.used - kept; }
  };
  struct Job {
    std::string file;
    std::string name;
    Counts counts;
  };
  /// Sorts as people do.
  struct Name {
    std::string text;
    bool operator<(const Name& other) const;
  };
  /// What tells stock apart: drawing and name of the profile, colour.
  using Material = std::tuple<Name, Name, Name>;

  Counts countsOf(const job::BarPlace& bar) const;
  Counts sum() const;

  double keepFrom_;
  std::vector<Job> jobs_;
  /// By the negative length of the bar, and its text where that is no plain number.
  std::map<std::tuple<Material, double, std::string>, std::size_t> stock_;
  std::map<Material, Counts> material_;
  std::set<std::tuple<Material, std::string, std::string, std::string>>
      cuts_;  ///< the different ones
  TextTable leftovers_{{"file", "bar", "profile", "name", "colour", "length"}, {}};
};

/// @param terminal where the text goes
std::string summaryText(const JobSummary& summary, const Terminal& terminal);

/// One table: its first column says which table of the summary a row belongs to.
std::string summaryCsv(const JobSummary& summary);

/// An object with a member for each table.
std::string summaryJson(const JobSummary& summary);

}  // namespace desk::show
