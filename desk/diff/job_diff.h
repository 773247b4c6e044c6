// What differs between two jobs, as data.
//
// What is compared is what the machine gets: the records that its readers fill. Which fields those
// have is told by the key tables.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desk/job/source_text.h"
#include "model/job_format.h"
#include "model/job_records.h"
#include "model/key_table.h"

namespace desk::diff {

/// A value that differs, or a work that is there on one side only.
struct Change {
  std::string work;  ///< "work 3 (drill)"; empty for a value of the element itself
  std::string key;   ///< as JSON jobs spell it; empty for a whole work
  std::string before;
  std::string after;
  std::optional<WORK_T> whole{};  ///< the work, where it is there on one side only
};

inline bool operator==(const Change& a, const Change& b) {
  return a.work == b.work && a.key == b.key && a.before == b.before && a.after == b.after;
}

enum class Kind { Added, Gone, Changed, Moved };

/// "added", "gone", "changed", "moved"
const char* nameOf(Kind kind);

/// The place of an element in its job; zero where the job does not have it.
struct Spot {
  job::Element at{};
  std::string bar{};  ///< number of the bar
};

/// An element that is on one side only or is not the same. A piece that lies on another bar is
/// moved, and its values may have changed as well.
struct Difference {
  Kind kind;
  model::Level level;  ///< header, bar or piece
  std::string name;    ///< of a bar its number; of a piece its barcode, else its number
  /// Where it stands in the old and in the new job.
  Spot before{};
  Spot after{};
  std::vector<Change> changes{};
  bool isByNumber = false;  ///< a piece without a barcode of its own
};

/// Keys of the other format that a format does not know, where the jobs have them: told once and
/// not for each element.
struct UnknownKeys {
  model::JobFormat format;
  model::Level level;
  std::vector<std::string> keys;
};

struct JobDiff {
  std::vector<Difference> differences;  ///< header, bars, pieces; each in the order of the jobs
  std::vector<UnknownKeys> unknown;

  bool isSame() const { return differences.empty() && unknown.empty(); }
};

struct Side {
  const DATA_T& job;
  model::JobFormat format;
};

/// Pieces are the same by their barcode, where that is there and on one piece only; else by bar and
/// piece number. Bars are the same by their number. What bears the same numbers is taken in its
/// order.
JobDiff compare(const Side& before, const Side& after);

/// What differs between the works of a piece. They have no names of their own: equal ones are the
/// same, then those of one operation in their order.
std::vector<Change> compareWorks(const std::vector<WORK_T>& before,
                                 const std::vector<WORK_T>& after);

}  // namespace desk::diff
