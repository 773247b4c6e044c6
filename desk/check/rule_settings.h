// Rules as people name them: to have one explained, to switch one off, to make it weigh more or
// less.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "desk/check/finding.h"

namespace desk::check {

std::vector<std::string> ruleIds();

/// What a rule can be set to: "off", "note" ...
std::vector<std::string> ruleLevels();

/// The rule with that id. Throws a usage Error with the nearest one.
/// @param what what the id is for: "check: --rule"
const Rule& ruleNamed(const std::string& id, const std::string& what);

/// The page of a rule: what is so, what the machine does, how to cure it.
std::string explain(const Rule& rule);

/// How grave findings are, where that is not for the rules to say.
class RuleSettings {
 public:
  /// Takes "RULE=off", "RULE=note", "RULE=warning" or "RULE=error"; of several for one rule the
  /// last one counts. Throws a usage Error for anything else.
  /// @param what what the setting is for: "check: --rule"
  void set(const std::string& setting, const std::string& what);

  /// Whether findings of a rule are off or weigh less than usual.
  bool lowers(const char* rule) const;

  /// Gives the findings from `from` on the severities wanted and takes out those that are off.
  void apply(Findings& findings, std::size_t from) const;

 private:
  std::map<const Rule*, std::optional<Severity>> wanted_;  ///< nothing: off
};

}  // namespace desk::check
