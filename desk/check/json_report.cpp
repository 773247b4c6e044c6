#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/check/reports.h"

namespace desk::check {

namespace {

Json::Value placeValue(const Report& report, const Place& place) {
  Json::Value value;
  value["file"] = asUtf8(fileOf(report, place));
  value["line"] = place.at.line;
  if (place.at.column > 0) value["column"] = place.at.column;
  return value;
}

}  // namespace

Json::Value findingValue(const Report& report, const Finding& finding) {
  Json::Value value = placeValue(report, finding.place);
  value["severity"] = nameOf(finding.severity);
  value["rule"] = finding.rule;
  value["message"] = asUtf8(finding.message);
  value["element"] = describe(finding.element);
  if (!finding.key.empty()) value["key"] = asUtf8(finding.key);
  for (const std::string& key : finding.lacks) value["lacks"].append(key);
  for (const CarriedValue& carried : finding.carried) {
    Json::Value one = placeValue(report, carried.place);
    one["key"] = carried.key;
    one["value"] = asUtf8(carried.value);
    one["element"] = describe(carried.element);
    value["carried"].append(one);
  }
  for (const Finding& one : finding.consequences) {
    value["consequences"].append(findingValue(report, one));
  }
  return value;
}

Json::Value unreadableValue(const Report& report) {
  Json::Value all(Json::arrayValue);
  for (const Unreadable& file : report.unreadable) {
    Json::Value value;
    value["file"] = asUtf8(file.file);
    value["reason"] = asUtf8(file.reason);
    all.append(value);
  }
  return all;
}

Json::Value summaryValue(const Report& report) {
  Json::Value summary;
  summary["files"] = static_cast<Json::UInt64>(report.sources.size());
  summary["errors"] = static_cast<Json::UInt64>(countOf(report, Severity::Error));
  summary["warnings"] = static_cast<Json::UInt64>(countOf(report, Severity::Warning));
  summary["notes"] = static_cast<Json::UInt64>(countOf(report, Severity::Note));
  return summary;
}

std::string jsonReport(const Report& report) {
  Json::Value root;
  root["findings"] = Json::arrayValue;
  for (const Finding& finding : listed(report)) {
    root["findings"].append(findingValue(report, finding));
  }
  root["unreadable"] = unreadableValue(report);
  root["summary"] = summaryValue(report);
  return jsonDocument(
      root, {"findings",     "unreadable", "summary", "file",   "line",     "column", "severity",
             "rule",         "message",    "key",     "value",  "element",  "lacks",  "carried",
             "consequences", "reason",     "files",   "errors", "warnings", "notes"});
}

}  // namespace desk::check
