// What a check finds.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "desk/job/rules.h"
#include "desk/job/source_text.h"

namespace desk::check {

using namespace job;  // what is found stands in elements and places of a job

/// A value that an element did not bring itself.
struct CarriedValue {
  std::string key;    ///< as the element would have had to spell it
  std::string value;  ///< as text
  Place place;        ///< where it was read
  Element element;    ///< for which element it was read
};

/// A script command that a value makes raise.
enum class Raises { Nothing, Load, GetCut, GetHole };

/// Where to look for the finding that another one comes of, in the same file.
struct Cause {
  const char* rule = nullptr;  ///< none: it is told for itself
  Position at{};
  Element element{};
};

struct Finding {
  const char* rule;  ///< an id of the rule table
  Severity severity;
  Place place;
  std::string message;
  Element element{};
  std::string key{};                    ///< the key, element or attribute that it is about, if any
  std::vector<CarriedValue> carried{};  ///< the values that stayed
  Raises raises = Raises::Nothing;      ///< what raises because of it
  std::string loses{};                  ///< the known key that the element lacks because of it
  std::vector<std::string> lacks{};     ///< the known keys whose absence it tells, but for carried
  std::vector<std::pair<Element, std::string>> judgedBy{};  ///< values, each with its key
  Cause cause{};                                            ///< where that is known
  bool isOnceMended = false;            ///< so only once a misspelt name is mended
  bool isWeighed = false;               ///< the severity is the one that the user set for the rule
  std::vector<Finding> consequences{};  ///< what would not be told without it
};

using Findings = std::vector<Finding>;

/// So many findings of a rule are told of a file. The message of the last one ends with words that
/// say that there are more.
constexpr std::size_t kMostOfRule = 20'000;
constexpr char kMoreOfRule[] = " (more findings of this rule are not told)";

/// The finding as a cause of others.
inline Cause causeFrom(const Finding& finding) {
  return {finding.rule, finding.place.at, finding.element};
}

/// Whether something raises because of the finding or of one of its consequences.
inline bool makesRaise(const Finding& finding, Raises what) {
  const auto& all = finding.consequences;
  return finding.raises == what || std::any_of(all.begin(), all.end(), [&](const Finding& one) {
           return makesRaise(one, what);
         });
}

}  // namespace desk::check
