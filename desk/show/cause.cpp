#include "desk/show/answers.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

#include "desk/base/text.h"
#include "desk/check/check_session.h"

namespace desk::show {

namespace {

using check::Finding;
using check::Findings;
using check::Raises;

constexpr std::pair<std::string_view, Raises> kCommands[] = {{"get_cut", Raises::GetCut},
                                                             {"get_hole", Raises::GetHole}};

Raises raisedBy(std::string_view command) {
  for (const auto& [name, raises] : kCommands) {
    if (name == command) return raises;
  }
  return Raises::Nothing;
}

using Check = std::function<void(check::CheckSession&)>;

std::string causeFound(const Raised& raised, const std::string& file, const Check& check) {
  const Raises raises = raisedBy(raised.command());
  if (raises == Raises::Nothing) return "";
  check::RuleSettings settings;
  settings.set(std::string(job::rules::kMissingKey) + "=off", "show");  // says less of it
  check::CheckSession session(check::CheckSession::Readers::Fresh, settings);
  check(session);
  const Findings& findings = session.report().findings;
  const auto cause = std::find_if(findings.begin(), findings.end(), [&](const Finding& finding) {
    return makesRaise(finding, raises);
  });
  return cause == findings.end() ? ""
                                 : "; " + escapeControls(file) + ":" +
                                       job::positionText(cause->place.at) + ": " + cause->message;
}

}  // namespace

std::string causeOf(const Raised& raised, const std::string& file) {
  return causeFound(raised, file, [&](check::CheckSession& session) { session.check(file); });
}

std::string causeOf(const Raised& raised, const std::string& file, const std::string& bytes) {
  return causeFound(raised, file,
                    [&](check::CheckSession& session) { session.check(file, bytes); });
}

}  // namespace desk::show
