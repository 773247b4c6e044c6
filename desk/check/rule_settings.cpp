#include "desk/check/rule_settings.h"

#include <algorithm>

#include "desk/base/command_line.h"
#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/text.h"

namespace desk::check {

namespace {

struct Level {
  const char* name;
  std::optional<Severity> severity;
};
constexpr Level kLevels[] = {{"off", std::nullopt},
                             {"note", Severity::Note},
                             {"warning", Severity::Warning},
                             {"error", Severity::Error}};

}  // namespace

std::vector<std::string> ruleIds() {
  std::vector<std::string> ids;
  for (const Rule& rule : allRules()) ids.emplace_back(rule.id);
  return ids;
}

std::vector<std::string> ruleLevels() {
  return namesOf(kLevels);
}

const Rule& ruleNamed(const std::string& id, const std::string& what) {
  if (const Rule* rule = findRule(id)) return *rule;
  const std::string near = nearest(id, ruleIds());
  throw Error(kExitUsage, what + ": there is no rule '" + id + "'; " +
                              (near.empty() ? "they are " + joined(ruleIds(), ", ")
                                            : "did you mean '" + near + "'?"));
}

std::string explain(const Rule& rule) {
  const std::string article = rule.usual == Severity::Error ? "an " : "a ";
  return wrapped(rule.id + (", usually " + article) + nameOf(rule.usual) + ": " + rule.statement +
                 ".") +
         "\n" + wrapped("On the machine: " + std::string(rule.machine)) + "\n" +
         wrapped("Cure: " + std::string(rule.cure));
}

void RuleSettings::set(const std::string& setting, const std::string& what) {
  const std::size_t end = setting.find('=');
  const Rule& rule = ruleNamed(setting.substr(0, end), what);
  const std::string level = end == std::string::npos ? "" : setting.substr(end + 1);
  wanted_[&rule] = choice(level, what + " " + rule.id, kLevels).severity;
}

bool RuleSettings::lowers(const char* rule) const {
  const auto found = wanted_.find(findRule(rule));
  return found != wanted_.end() && (!found->second || *found->second < found->first->usual);
}

void RuleSettings::apply(Findings& findings, std::size_t from) const {
  if (wanted_.empty()) return;
  const auto isOff = [&](Finding& finding) {
    const auto found = wanted_.find(findRule(finding.rule));
    if (found == wanted_.end()) return false;
    finding.severity = found->second.value_or(finding.severity);
    finding.isWeighed = true;
    return !found->second;
  };
  const auto first = findings.begin() + static_cast<std::ptrdiff_t>(from);
  findings.erase(std::remove_if(first, findings.end(), isOff), findings.end());
}

}  // namespace desk::check
