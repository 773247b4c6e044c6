#include "desk/view/findings.h"

#include <algorithm>
#include <vector>

#include "desk/base/json_document.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/check/reports.h"
#include "desk/job/rules.h"

namespace desk::view {

namespace {

using check::Finding;
using check::Report;
using job::Element;

constexpr std::size_t kColumns = 120;  ///< of a line that is shown

/// How many of UTF-16's units, which pages count in, fill so many columns at the start of a text.
int unitsIn(const std::string& text, std::size_t columns) {
  int units = 0;
  std::size_t width = 0;
  for (std::size_t at = 0; at < text.size() && width < columns;) {
    const std::size_t bytes = std::max<std::size_t>(utf8CharacterSize(text, at), 1);
    width += displayWidth(std::string_view(text).substr(at, bytes));
    units += bytes == 4 ? 2 : 1;
    at += bytes;
  }
  return units;
}

Json::Value excerptValue(const Report& report, const job::Place& place) {
  Json::Value lines(Json::arrayValue);
  const auto& source = *report.sources[static_cast<std::size_t>(place.file)];
  const job::Excerpt excerpt = excerptOf(source, place.at, kColumns);
  if (excerpt.text.empty()) return lines;
  Json::Value line;
  line["line"] = place.at.line;
  line["text"] = asUtf8(excerpt.text);
  if (place.at.column > 0) {
    line["from"] = unitsIn(excerpt.text, excerpt.start);
    line["to"] = unitsIn(excerpt.text, excerpt.start + excerpt.width);
  }
  lines.append(line);
  return lines;
}

Json::Value idsOf(const Finding& finding) {
  Json::Value ids(Json::arrayValue);
  if (finding.element.bar > 0) ids.append(idOf(finding.element));
  return ids;
}

/// Adds to what a check writes of a finding what links it with the rest of a page.
void link(Json::Value& value, const Report& report, const Finding& finding) {
  value["ids"] = idsOf(finding);
  value["excerpt"] = excerptValue(report, finding.place);
  Json::ArrayIndex index = 0;
  for (const Finding& one : finding.consequences) {
    link(value["consequences"][index++], report, one);
  }
}

bool isAbout(const Finding& finding, const Element& element) {
  const auto& all = finding.consequences;
  return isIn(finding.element, element) ||
         std::any_of(all.begin(), all.end(),
                     [&](const Finding& one) { return isAbout(one, element); });
}

Json::Value ruleValue(const job::Rule& rule) {
  Json::Value value;
  value["statement"] = rule.statement;
  value["machine"] = rule.machine;
  value["cure"] = rule.cure;
  return value;
}

void addRules(Json::Value& rules, const Finding& finding) {
  if (const job::Rule* const rule = job::findRule(finding.rule)) {
    rules[finding.rule] = ruleValue(*rule);
  }
  for (const Finding& one : finding.consequences) addRules(rules, one);
}

/// Those that a page asks for, in the order of the report.
std::vector<const Finding*> meantFindings(const Report& report, const Query& query) {
  const std::string severity = valueOf(query, "severity");
  const std::string id = valueOf(query, "id");
  const Element element = id.empty() ? Element{} : elementOf(id);
  std::vector<const Finding*> meant;
  for (const Finding& one : report.findings) {
    const bool isOne = severity.empty() || severity == nameOf(one.severity);
    if (isOne && (id.empty() || isAbout(one, element))) meant.push_back(&one);
  }
  return meant;
}

}  // namespace

std::string findingsDocument(const Report& report, const Query& query) {
  const std::vector<const Finding*> meant = meantFindings(report, query);
  const Window window = windowOf(query);
  Json::Value document;
  document["findings"] = Json::arrayValue;
  document["rules"] = Json::objectValue;
  for (std::size_t i = window.from; i < meant.size() && window.has(i); ++i) {
    Json::Value value = findingValue(report, *meant[i]);
    link(value, report, *meant[i]);
    document["findings"].append(std::move(value));
    addRules(document["rules"], *meant[i]);
  }
  if (const std::string id = valueOf(query, "find"); !id.empty()) {
    const auto isIt = [&, element = elementOf(id)](const Finding* one) {
      return isAbout(*one, element);
    };
    const auto found = std::find_if(meant.begin(), meant.end(), isIt);
    if (found != meant.end()) document["found"] = Json::Int64{found - meant.begin()};
  }
  document["all"] = Json::UInt64{report.findings.size()};
  document["rows"] = Json::UInt64{meant.size()};
  document["from"] = Json::UInt64{window.from};
  document["summary"] = summaryValue(report);
  document["unreadable"] = unreadableValue(report);
  return compactJson(document);
}

std::size_t countAbout(const Report& report, const Element& element) {
  return static_cast<std::size_t>(
      std::count_if(report.findings.begin(), report.findings.end(),
                    [&](const Finding& finding) { return isAbout(finding, element); }));
}

std::string sourceDocument(const job::SourceText& source, const Query& query) {
  const std::size_t from = std::max<std::size_t>(wholeNumber(query, "line", 1), 1);
  const std::size_t count = windowOf(query).count;
  Json::Value document;
  document["all"] = source.lineCount();
  document["from"] = Json::UInt64{from};
  document["lines"] = Json::arrayValue;
  job::Position at{static_cast<int>(from), static_cast<int>(wholeNumber(query, "column", 0))};
  const int until = static_cast<int>(wholeNumber(query, "until", 0));
  for (; at.line <= source.lineCount() && document["lines"].size() < count; ++at.line) {
    const bool isPart = at.column > 0 && until > at.column;
    document["lines"].append(
        asUtf8(isPart ? partOf(source, at, until) : excerptOf(source, at, kColumns).text));
    at.column = 0;
  }
  return compactJson(document);
}

}  // namespace desk::view
