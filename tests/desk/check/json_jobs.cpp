#include "tests/desk/check/json_jobs.h"

#include <json/writer.h>

#include "json/json_keys.h"

namespace test_support {

namespace {

using model::KeyKind;

KeyKind kindOf(const json_keys::LabelKey&) {
  return KeyKind::Text;
}

template <class Record>
KeyKind kindOf(const model::Key<Record>& key) {
  return key.kind;
}

}  // namespace

Json::Value JsonJobs::any() {
  switch (number(10)) {
    case 0:
      return Json::Value();
    case 1:
      return number(2) == 0;
    case 2:
      return Json::Value(Json::Int64{3'000'000'000});
    case 3:
      return number(9) + 0.5;
    case 4:
      return Json::Value(Json::arrayValue);
    case 5: {
      Json::Value object;
      object["Name"] = "inner";
      return object;
    }
    case 6:
      return "135";
    default:
      return number(2) == 0 ? Json::Value(number(20))
                            : Json::Value("t" + std::to_string(number(9)));
  }
}

template <class Table>
void JsonJobs::addKeys(const Table& table, Json::Value& object) {
  const int present = 30 + number(70);
  for (const auto& key : table) {
    for (const char* spelling : {key.spelling, key.secondSpelling}) {
      if (spelling == nullptr || !chance(spelling == key.spelling ? present : 12)) continue;
      const KeyKind kind = kindOf(key);
      Json::Value& value = object[spelling];
      if (chance(12)) {
        value = any();
      } else if (kind == KeyKind::Text) {
        value = chance(10) ? "" : "t" + std::to_string(number(99));
      } else if (kind == KeyKind::Flag) {
        value = number(2) == 0;
      } else {
        value = kind == KeyKind::Number && chance(50) ? Json::Value(number(99) + 0.25)
                                                      : Json::Value(number(99));
      }
    }
  }
}

void JsonJobs::addStray(Json::Value& object) {
  constexpr const char* kStrays[] = {"Note", "BARCODE", "customername", "Length", "Pieces", "x"};
  if (chance(15)) object[kStrays[number(6)]] = any();
}

template <class Make>
Json::Value JsonJobs::list(Make make) {
  Json::Value array(Json::arrayValue);
  for (int count = number(4); count > 0; --count) array.append(chance(4) ? any() : make());
  return array;
}

Json::Value JsonJobs::work() {
  Json::Value object(Json::objectValue);
  addKeys(json_keys::kWork, object);
  addStray(object);
  return object;
}

Json::Value JsonJobs::cut() {
  Json::Value object(Json::objectValue);
  addKeys(json_keys::kCut, object);
  if (chance(20)) object["dxB"] = "135";
  addStray(object);
  return object;
}

Json::Value JsonJobs::piece() {
  Json::Value object(Json::objectValue);
  addKeys(json_keys::kPiece, object);
  if (chance(70)) addKeys(json_keys::kLabelFields, object);
  if (chance(80)) object["cut"] = chance(92) ? cut() : any();
  if (chance(80)) object["work"] = chance(92) ? list([&] { return work(); }) : any();
  addStray(object);
  return object;
}

Json::Value JsonJobs::bar() {
  Json::Value object(Json::objectValue);
  addKeys(json_keys::kBar, object);
  if (chance(85)) object["piece"] = chance(92) ? list([&] { return piece(); }) : any();
  addStray(object);
  return object;
}

Json::Value JsonJobs::next() {
  Json::Value root(Json::objectValue);
  addKeys(json_keys::kHeader, root);
  if (chance(90)) root["Version"] = "1.0";
  if (chance(5)) root["version"] = "1.0";
  if (chance(90)) root["Bar"] = chance(95) ? list([&] { return bar(); }) : any();
  if (chance(10)) root["bar"] = list([&] { return bar(); });
  addStray(root);
  return root;
}

std::string JsonJobs::write(const Json::Value& root, std::vector<int>& lost,
                            std::vector<int>* inHeader) {
  std::string text;
  int line = 1;
  writeValue(root, text, line, lost, inHeader);
  return text;
}

void JsonJobs::writeValue(const Json::Value& value, std::string& text, int& line,
                          std::vector<int>& lost, std::vector<int>* here) {
  if (!value.isArray() && !value.isObject()) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    text += Json::writeString(builder, value);
    return;
  }
  text += value.isArray() ? "[" : "{";
  bool first = true;
  const auto nextLine = [&] {
    text += first ? "\n" : ",\n";
    first = false;
    ++line;
  };
  for (auto entry = value.begin(); entry != value.end(); ++entry) {
    if (value.isObject() && chance(2)) {
      nextLine();
      lost.push_back(line);
      if (here != nullptr) here->push_back(line);
      text += "\"" + entry.name() + "\": {\"Name\": [\"}\", \"\\\"\"]}";
    }
    nextLine();
    if (value.isObject()) text += "\"" + entry.name() + "\" : /* \" */ ";
    writeValue(*entry, text, line, lost, nullptr);
  }
  text += value.isArray() ? "]" : "}";
}

}  // namespace test_support
