#include "desk/diff/job_diff.h"

#include "desk/base/text.h"
#include "desk/diff/matching.h"
#include "desk/job/piece_text.h"
#include "desk/job/traced_job.h"

namespace desk::diff {

namespace {

std::string wholeText(const WORK_T& work) {
  std::string text;
  for (const auto& key : job::FieldsOf<WORK_T>::keys) text += job::textOf(work, key) + '\0';
  return text;
}

std::string nameOf(const std::vector<WORK_T>& works, std::size_t index) {
  return "work " + std::to_string(index + 1) + " (" + works[index].Name + ")";
}

void addFields(const WORK_T& before, const WORK_T& after, const std::string& name,
               std::vector<Change>& changes) {
  for (const auto& key : job::FieldsOf<WORK_T>::keys) {
    const std::string old = job::textOf(before, key);
    const std::string now = job::textOf(after, key);
    if (old != now) changes.push_back({name, key.spelling, old, now});
  }
}

/// The numbers of the old works that are still there, in their old and in their new order.
Change orderOf(const Matching& works) {
  std::vector<std::string> old;
  std::vector<std::string> now;
  for (std::size_t i = 0; i < works.toAfter.size(); ++i) {
    if (works.toAfter[i] >= 0) old.push_back(std::to_string(i + 1));
  }
  for (const int partner : works.toBefore) {
    if (partner >= 0) now.push_back(std::to_string(partner + 1));
  }
  return {"", "order of works", joined(old, ", "), joined(now, ", ")};
}

}  // namespace

std::vector<Change> compareWorks(const std::vector<WORK_T>& before,
                                 const std::vector<WORK_T>& after) {
  const auto always = [](const WORK_T&, const WORK_T&) { return true; };
  Matching works(before.size(), after.size());
  pairByKey(before, after, works, wholeText, always);
  pairByKey(
      before, after, works, [](const WORK_T& work) { return work.Name; }, always);
  std::vector<Change> changes;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const int partner = works.toAfter[i];
    if (partner < 0) {
      changes.push_back({nameOf(before, i), "", job::workText(before[i]), "", before[i]});
    } else {
      addFields(before[i], after[static_cast<std::size_t>(partner)], nameOf(before, i), changes);
    }
  }
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (works.toBefore[i] < 0) {
      changes.push_back({nameOf(after, i), "", "", job::workText(after[i]), after[i]});
    }
  }
  if (isReordered(works.toAfter)) changes.push_back(orderOf(works));
  return changes;
}

}  // namespace desk::diff
