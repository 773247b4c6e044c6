#include "desk/check/json_values.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <string>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/check/advice.h"
#include "json/json_keys.h"

namespace desk::check {

namespace {

using model::Level;

/// A name that stands in a row, as its first or second spelling.
struct Name {
  std::string_view text;
  std::size_t slot;

  bool operator<(const Name& other) const { return text < other.text; }
};

/// All names of a level, sorted as the library sorts the members of an object.
struct Names {
  std::vector<Name> sorted;
  std::size_t slots = 0;  ///< the last one is for names that stand in no row

  template <class Rows>
  void addRows(const Rows& rows) {
    for (const auto& row : rows) {
      sorted.push_back({row.spelling, slots++});
      if (row.secondSpelling != nullptr) sorted.push_back({row.secondSpelling, slots});
      ++slots;
    }
  }

  void finish(Level level) {
    const std::size_t count = sorted.size();
    for (const std::string& name : namesAt(level, model::JobFormat::Json)) {
      const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(count);
      const auto isIt = [&](const Name& row) { return row.text == name; };
      if (std::none_of(sorted.begin(), end, isIt)) sorted.push_back({name, slots});
    }
    ++slots;
    std::sort(sorted.begin(), sorted.end());
  }
};

using AllNames = std::array<Names, std::size(model::kLevels)>;

AllNames makeNames() {
  AllNames all;
  const auto at = [&](Level level) -> Names& { return all[static_cast<std::size_t>(level)]; };
  at(Level::Header).addRows(json_keys::kHeader);
  at(Level::Bar).addRows(json_keys::kBar);
  at(Level::Piece).addRows(json_keys::kPiece);
  at(Level::Piece).addRows(json_keys::kLabelFields);
  at(Level::Cut).addRows(json_keys::kCut);
  at(Level::Work).addRows(json_keys::kWork);
  for (const model::LevelRow& row : model::kLevels) at(row.level).finish(row.level);
  return all;
}

}  // namespace

void JsonMembers::sort(const Json::Value& object, Level level) {
  static const AllNames kNames = makeNames();
  const Names& names = kNames[static_cast<std::size_t>(level)];
  known_.assign(names.slots, nullptr);
  strangers_.clear();
  if (!object.isObject()) return;
  auto name = names.sorted.begin();
  for (auto member = object.begin(); member != object.end(); ++member) {
    const char* end = nullptr;
    const char* const start = member.memberName(&end);
    const std::string_view key(start, static_cast<std::size_t>(end - start));
    int order = -1;
    while (name != names.sorted.end() && (order = name->text.compare(key)) < 0) ++name;
    if (order != 0) strangers_.emplace_back(key, &*member);
    for (; name != names.sorted.end() && name->text == key; ++name) known_[name->slot] = &*member;
  }
}

const Json::Value* member(const Json::Value& object, const char* name) {
  if (name == nullptr || !object.isObject()) return nullptr;
  return object.find(name, name + std::strlen(name));
}

bool holdsZeroByte(const Json::Value& value) {
  const char* begin = nullptr;
  const char* end = nullptr;
  return value.isString() && value.getString(&begin, &end) &&
         std::memchr(begin, 0, static_cast<std::size_t>(end - begin)) != nullptr;
}

const char* wordFor(model::KeyKind kind) {
  using model::KeyKind;
  switch (kind) {
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      return "an integer of 32 bits";
    case KeyKind::Number:
      return "a number";
    case KeyKind::Flag:
      return "true or false";
    case KeyKind::Text:
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return "a text";
}

std::string describe(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      return "null";
    case Json::booleanValue:
      return value.asBool() ? "true" : "false";
    case Json::intValue:
    case Json::uintValue:
      return "the number " + value.asString();
    case Json::realValue:
      return "the number " + shortestText(value.asDouble());
    case Json::stringValue:
      return "the text " + quoted(value.asString());
    case Json::arrayValue:
      return "an array";
    case Json::objectValue:
      break;
  }
  return "an object";
}

}  // namespace desk::check
