// The drawn bars of a job, each by itself.
#pragma once

#include <string>
#include <vector>

#include "desk/check/check_session.h"
#include "desk/draw/job_drawing.h"
#include "desk/view/query.h"

namespace desk::view {

class Bars {
 public:
  /// @param checked of a job that loads; it must outlive this and check no other
  explicit Bars(const check::CheckSession& checked);

  /// What is drawn, equal bars once: their places in the job, title and size; and the signs of the
  /// works.
  std::string list() const;

  /// SVG of the group of equal bars that is asked for. Throws Refusal for another.
  std::string one(const Query& query) const;

  /// SVG of all, in pages.
  std::string sheets() const { return drawing_.sheets().svg; }

  /// The group of a bar: its place in the job from 1.
  std::size_t groupOf(int bar) const { return groups_.at(static_cast<std::size_t>(bar - 1)); }

 private:
  std::vector<job::BarPlace> bars_;
  draw::JobDrawing drawing_;
  std::vector<std::size_t> groups_;  ///< of each bar
};

}  // namespace desk::view
