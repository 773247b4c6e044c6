#include <cctype>

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/check/reports.h"
#include "desk/job/rules.h"

namespace desk::check {

namespace {

/// A path as a URI reference: relative as it was given, or with the scheme of files.
std::string uriOf(const std::string& path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "-._~/!$&'()*+,;=@";
  std::string uri = path.rfind('/', 0) == 0 ? "file://" : "";
  for (const char byte : path) {
    const auto value = static_cast<unsigned char>(byte);
    const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    if (isLetter || (byte >= '0' && byte <= '9') || kPlain.find(byte) != std::string_view::npos) {
      uri += byte;
    } else {
      uri += {'%', kDigits[value >> 4], kDigits[value & 0xF]};
    }
  }
  return uri;
}

Json::Value location(const Report& report, const Place& place, const Element& element) {
  Json::Value value;
  Json::Value& physical = value["physicalLocation"];
  physical["artifactLocation"]["uri"] = uriOf(fileOf(report, place));
  physical["region"]["startLine"] = place.at.line;
  if (place.at.column > 0) physical["region"]["startColumn"] = place.at.column;
  value["logicalLocations"][0]["fullyQualifiedName"] = describe(element);
  return value;
}

Json::Value resultOf(const Report& report, const Finding& finding) {
  Json::Value result;
  result["ruleId"] = finding.rule;
  const auto index = findRule(finding.rule) - allRules().data();
  result["ruleIndex"] = static_cast<Json::Int64>(index);
  result["level"] = nameOf(finding.severity);
  result["message"]["text"] = asUtf8(finding.message);
  result["locations"].append(location(report, finding.place, finding.element));
  for (const CarriedValue& carried : finding.carried) {
    Json::Value related = location(report, carried.place, carried.element);
    related["message"]["text"] = asUtf8(carried.key + " " + quoted(carried.value));
    result["relatedLocations"].append(related);
  }
  for (const Finding& one : finding.consequences) {
    Json::Value related = location(report, one.place, one.element);
    related["message"]["text"] = asUtf8(one.message);
    result["relatedLocations"].append(related);
  }
  return result;
}

/// With a capital and a full stop.
std::string sentence(std::string text) {
  text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  return text.back() == '.' ? text : text + '.';
}

Json::Value tool() {
  Json::Value driver;
  driver["name"] = "cusdesk";
  driver["version"] = CUSDESK_VERSION;
  for (const Rule& rule : allRules()) {
    Json::Value value;
    value["id"] = rule.id;
    value["shortDescription"]["text"] = sentence(rule.statement);
    value["fullDescription"]["text"] = sentence(rule.machine);
    value["help"]["text"] = "Cure: " + std::string(rule.cure);
    value["help"]["markdown"] =
        "**On the machine:** " + std::string(rule.machine) + "\n\n**Cure:** " + rule.cure;
    value["defaultConfiguration"]["level"] = nameOf(rule.usual);
    driver["rules"].append(value);
  }
  Json::Value value;
  value["driver"] = driver;
  return value;
}

}  // namespace

std::string sarifReport(const Report& report) {
  Json::Value run;
  run["tool"] = tool();
  run["columnKind"] = "unicodeCodePoints";
  run["results"] = Json::arrayValue;
  for (const Finding& finding : listed(report)) run["results"].append(resultOf(report, finding));
  Json::Value invocation;
  invocation["executionSuccessful"] = report.unreadable.empty();
  for (const Unreadable& file : report.unreadable) {
    Json::Value notification;
    notification["level"] = "error";
    notification["message"]["text"] = asUtf8(file.reason);
    invocation["toolExecutionNotifications"].append(notification);
  }
  run["invocations"].append(invocation);
  Json::Value root;
  root["$schema"] = "https://json.schemastore.org/sarif-2.1.0.json";
  root["version"] = "2.1.0";
  root["runs"].append(run);
  return jsonDocument(root, {"$schema",
                             "name",
                             "version",
                             "runs",
                             "tool",
                             "columnKind",
                             "invocations",
                             "results",
                             "id",
                             "ruleId",
                             "ruleIndex",
                             "level",
                             "message",
                             "text",
                             "markdown",
                             "shortDescription",
                             "fullDescription",
                             "help",
                             "locations",
                             "physicalLocation",
                             "artifactLocation",
                             "region"});
}

}  // namespace desk::check
