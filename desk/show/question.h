// What cusdesk show is asked.
#pragma once

#include <string>

namespace desk::show {

enum class Subject { Bars, Works, Cuts, Holes, Labels, Dimensions };

/// What is asked.
struct Question {
  Subject subject;
  std::string barCode;  ///< empty: of all pieces
  std::string bar;      ///< number; empty: of all bars
};

}  // namespace desk::show
