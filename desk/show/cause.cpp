#include "desk/show/cause.h"

#include <algorithm>
#include <string_view>

#include "desk/check/check_session.h"
#include "desk/check/rules.h"
#include "desk/host/log.h"

namespace desk::show {

namespace {

using check::Finding;
using check::Findings;

/// A command, and the words of findings about it.
struct Raising {
  std::string_view command, words;
};
constexpr Raising kRaising[] = {
    {"getjson_Flash: ", "loading raises"}, {"get_cut: ", "get_cut("}, {"get_hole: ", "get_hole("}};

std::string_view wordsFor(std::string_view message) {
  for (const Raising& row : kRaising) {
    if (message.find(row.command) != std::string_view::npos) return row.words;
  }
  return {};
}

}  // namespace

std::string causeOf(const Raised& raised, const std::string& file) {
  const std::string_view words = wordsFor(raised.what());
  if (words.empty()) return "";
  check::CheckSession session(check::CheckSession::Readers::Fresh);
  session.check(file);
  const Findings& findings = session.report().findings;
  const auto cause = std::find_if(findings.begin(), findings.end(), [&](const Finding& finding) {
    return (finding.rule == check::rules::kRaises ||
            finding.rule == check::rules::kMissingElement) &&
           finding.message.find(words) != std::string::npos;
  });
  return cause == findings.end() ? ""
                                 : "; " + deskhost::visible(file) + ":" +
                                       check::positionText(cause->place.at) + ": " + cause->message;
}

}  // namespace desk::show
