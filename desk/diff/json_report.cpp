#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/diff/reports.h"
#include "desk/job/piece_text.h"
#include "json/json_keys.h"

namespace desk::diff {

namespace {

const char* nameOf(model::Level level) {
  return model::kLevels[static_cast<std::size_t>(level)].name;
}

/// The number of the bar, and the places of bar and piece from 1.
Json::Value placeValue(const Spot& spot) {
  Json::Value value(Json::objectValue);
  value["bar"] = asUtf8(spot.bar);
  value["barPlace"] = spot.at.bar;
  if (spot.at.piece > 0) value["piecePlace"] = spot.at.piece;
  return value;
}

Json::Value changeValue(const Change& change) {
  Json::Value value(Json::objectValue);
  if (!change.work.empty()) value["work"] = asUtf8(change.work);
  if (!change.key.empty()) value["key"] = change.key;
  if (change.whole) {
    value[change.before.empty() ? "new" : "old"] = job::workValue(*change.whole);
    return value;
  }
  const bool isValue = !change.key.empty();
  if (isValue || !change.before.empty()) value["old"] = asUtf8(change.before);
  if (isValue || !change.after.empty()) value["new"] = asUtf8(change.after);
  return value;
}

Json::Value differenceValue(const Difference& difference) {
  Json::Value value(Json::objectValue);
  value["kind"] = nameOf(difference.kind);
  value["element"] = nameOf(difference.level);
  value["name"] = asUtf8(difference.name);
  if (difference.before.at.bar > 0) value["old"] = placeValue(difference.before);
  if (difference.after.at.bar > 0) value["new"] = placeValue(difference.after);
  for (const Change& change : difference.changes) value["changes"].append(changeValue(change));
  return value;
}

}  // namespace

std::string jsonReport(const JobDiff& diff, const Files& files) {
  Json::Value root;
  root["old"] = asUtf8(files.before);
  root["new"] = asUtf8(files.after);
  root["same"] = diff.isSame();
  root["differences"] = Json::arrayValue;
  for (const Difference& difference : diff.differences) {
    root["differences"].append(differenceValue(difference));
  }
  root["unknown"] = Json::arrayValue;
  for (const UnknownKeys& unknown : diff.unknown) {
    Json::Value value;
    value["format"] = model::rowOf(unknown.format).name;
    value["element"] = nameOf(unknown.level);
    for (const std::string& key : unknown.keys) value["keys"].append(key);
    root["unknown"].append(value);
  }
  std::vector<std::string> order = {"kind",       "format", "element",     "name",   "work",
                                    "key",        "old",    "new",         "bar",    "barPlace",
                                    "piecePlace", "same",   "differences", "unknown"};
  for (const auto& key : json_keys::kWork) order.emplace_back(key.spelling);
  return jsonDocument(root, order);
}

}  // namespace desk::diff
