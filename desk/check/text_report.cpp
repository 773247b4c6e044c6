#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <vector>

#include "desk/base/text.h"
#include "desk/check/reports.h"

namespace desk::check {

namespace {

constexpr std::size_t kShownOfEach = 3;

constexpr char kBold[] = "\x1b[1m";
constexpr char kRed[] = "\x1b[1;31m";
constexpr char kYellow[] = "\x1b[1;33m";
constexpr char kCyan[] = "\x1b[1;36m";
constexpr char kPlain[] = "\x1b[0m";

const char* colourOf(Severity severity) {
  switch (severity) {
    case Severity::Error:
      return kRed;
    case Severity::Warning:
      return kYellow;
    case Severity::Note:
      break;
  }
  return kCyan;
}

std::string withoutNumbers(std::string text) {
  const auto isDigit = [](char byte) { return byte >= '0' && byte <= '9'; };
  text.erase(std::remove_if(text.begin(), text.end(), isDigit), text.end());
  return text;
}

/// Findings that differ in their place only: same file, rule, severity, level and subject.
using Kind = std::tuple<int, std::string, Severity, int, std::string>;

/// How deep in the job an element is.
int levelOf(const Element& element) {
  return (element.bar > 0 ? 1 : 0) + (element.piece > 0 ? 1 : 0) + (element.work > 0 ? 1 : 0);
}

Kind kindOf(const Finding& finding) {
  std::string subject = finding.key;
  for (const CarriedValue& value : finding.carried) subject += "/" + value.key;
  if (subject.empty()) subject = withoutNumbers(finding.message);
  return {finding.place.file, finding.rule, finding.severity, levelOf(finding.element), subject};
}

class TextReport {
 public:
  TextReport(const Report& report, const Terminal& terminal, const TextOptions& options)
      : report_(report), terminal_(terminal), options_(options) {}

  std::string write() {
    const std::vector<Count*> counts = countKinds();
    for (std::size_t i = 0; i < counts.size(); ++i) {
      const Finding& finding = report_.findings[i];
      const std::size_t number = ++counts[i]->seen;
      if (options_.all || number <= kShownOfEach) writeFinding(finding);
      if (!options_.all && number == kShownOfEach) writeRest(finding, counts[i]->all);
    }
    if (options_.summary && !report_.sources.empty()) writeSummary();
    return text_;
  }

 private:
  std::string coloured(const char* colour, const std::string& text) const {
    return terminal_.hasColour ? colour + text + kPlain : text;
  }

  /// How many findings there are of a kind, and how many of them were met.
  struct Count {
    std::size_t all = 0;
    std::size_t seen = 0;
  };

  /// Returns the count of each finding.
  std::vector<Count*> countKinds() {
    std::vector<Count*> counts;
    counts.reserve(report_.findings.size());
    for (const Finding& finding : report_.findings) {
      counts.push_back(&kinds_[kindOf(finding)]);
      ++counts.back()->all;
    }
    return counts;
  }

  void writeFinding(const Finding& finding) {
    const std::string place =
        escapeControls(fileOf(report_, finding.place)) + ":" + positionText(finding.place.at) + ":";
    text_ += coloured(kBold, place) + " " +
             coloured(colourOf(finding.severity), std::string(nameOf(finding.severity)) + ":") +
             " " + finding.message + " [" + finding.rule + "]\n";
    for (const Finding& one : finding.consequences) {
      text_ += "    " + one.message + " [" + one.rule + "]\n";
    }
    if (terminal_.isForEyes()) writeExcerpt(finding);
  }

  void writeExcerpt(const Finding& finding) {
    const Position at = finding.place.at;
    const SourceText& source = *report_.sources[static_cast<std::size_t>(finding.place.file)];
    const std::string number = std::to_string(at.line);
    const std::size_t margin = number.size() + 4;
    const Excerpt excerpt = excerptOf(source, at, terminal_.columns - margin);
    if (excerpt.text.empty()) return;
    text_ += " " + number + " | " + excerpt.text + "\n";
    if (at.column == 0) return;
    text_ += std::string(margin - 2, ' ') + "| " + std::string(excerpt.start, ' ') +
             coloured(colourOf(finding.severity), "^" + std::string(excerpt.width - 1, '~')) + "\n";
  }

  void writeRest(const Finding& finding, std::size_t all) {
    const std::size_t more = all - kShownOfEach;
    if (more == 0) return;
    text_ += escapeControls(fileOf(report_, finding.place)) + ": " + std::to_string(more) +
             " more like this; --all shows them [" + finding.rule + "]\n";
  }

  void writeSummary() {
    std::set<int> files;
    for (const Finding& finding : report_.findings) files.insert(finding.place.file);
    if (files.empty()) {
      text_ += "no findings in " + countText(report_.sources.size(), "file") + "\n";
      return;
    }
    text_ += countsText(report_) + " in " + countText(files.size(), "file") + "\n";
  }

  const Report& report_;
  const Terminal& terminal_;
  const TextOptions options_;
  std::map<Kind, Count> kinds_;
  std::string text_;
};

}  // namespace

std::string textReport(const Report& report, const Terminal& terminal, const TextOptions& options) {
  return TextReport(report, terminal, options).write();
}

}  // namespace desk::check
