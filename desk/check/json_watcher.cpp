#include "desk/check/json_watcher.h"

#include <string_view>
#include <utility>

#include "desk/check/json_values.h"
#include "desk/job/rules.h"
#include "json/json_reading.h"

namespace desk::check {

using json_keys::kLabelFields;
using json_keys::LabelKey;

namespace {

constexpr std::size_t kFirstLabelRow = std::size(json_keys::kPiece);

const char* nameOf(std::string FIELD_T::*field) {
  for (const LabelKey& row : kLabelFields) {
    if (row.field == field) return row.spelling;
  }
  return "";
}

}  // namespace

int JsonWatcher::read(const Json::Value& root, const JsonPositions& text, const Sources& sources,
                      Findings& findings) {
  start(sources, findings);
  text_ = &text;
  const int code = json_reading::Reading<JsonWatcher>(reader_, *this).data(root);
  finish();
  if (code < 0 || reader_.data.Version != json_keys::kVersion) reportVersion(root, code);
  return code;
}

void JsonWatcher::begins(Level level, const Json::Value& element) {
  enter(level);
  if (level == Level::Header) traced_.place = placeOf(element);
  if (level == Level::Piece) labelWriters_.fill(nullptr);
  members_[static_cast<std::size_t>(level)].sort(element, level);
}

template <class Record>
void JsonWatcher::key(const Json::Value&, const model::Key<Record>& key, const Json::Value* taken) {
  constexpr Level level = FieldsOf<Record>::level;
  const auto row = static_cast<std::size_t>(&key - FieldsOf<Record>::keys);
  const auto look = [&](const Json::Value* value, const char* spelling, bool isTaken) {
    if (value == nullptr) return false;
    if (isTaken) {
      reportShadowed(*value, *taken, spelling, key.spelling, level);
    } else if (value != taken) {
      reportWrongType(*value, spelling, wordFor(key.kind), level);
    } else {
      noteOrigin<Record>(row, placeOf(*value));
      reportZeroByte(*value, spelling, level);
      return true;
    }
    return false;
  };
  const bool isTaken = look(membersAt(level).first(row), key.spelling, false);
  if (key.secondSpelling == nullptr) return;
  look(membersAt(level).second(row), key.secondSpelling, isTaken);
}

void JsonWatcher::label(const Json::Value& piece, const LabelKey& row, const Json::Value* taken) {
  const auto index = static_cast<std::size_t>(&row - kLabelFields);
  const Json::Value* first = membersAt(Level::Piece).first(kFirstLabelRow + index);
  const Json::Value* second = membersAt(Level::Piece).second(kFirstLabelRow + index);
  if (first != nullptr && first != taken) {
    reportWrongType(*first, row.spelling, "a text", Level::Piece);
  }
  if (taken == nullptr) {
    if (second == nullptr) return;
    reportWrongType(*second, row.secondSpelling, "a text", Level::Piece);
    return;
  }
  if (taken == first) {
    labelTaken(piece, row.spelling, *taken, row.field);
    if (second == nullptr) return;
    reportShadowed(*second, *first, row.secondSpelling, row.spelling, Level::Piece);
    return;
  }
  Findings overwritten = labelTaken(piece, row.secondSpelling, *taken, row.secondField);
  if (row.secondField == row.field) return;
  Finding& misplaced =
      report(rules::kLabelMisplaced, Severity::Warning, placeOfKey(*second),
             "\"" + std::string(row.secondSpelling) + "\" fills " + nameOf(row.secondField) +
                 "; write \"" + row.spelling + "\" for the field of that number",
             row.secondSpelling);
  misplaced.loses = row.spelling;
  const Cause cause = causeFrom(misplaced);
  for (Finding& one : overwritten) {
    one.cause = cause;
    report(std::move(one));
  }
}

Findings JsonWatcher::labelTaken(const Json::Value& piece, const char* spelling,
                                 const Json::Value& value, std::string FIELD_T::*field) {
  std::size_t index = 0;
  while (kLabelFields[index].field != field) ++index;
  Findings overwritten;
  if (const char* earlier = labelWriters_[index]) {
    overwritten.push_back(found(rules::kShadowedKey, Severity::Warning,
                                placeOfKey(*member(piece, earlier)),
                                "\"" + std::string(earlier) + "\" is overwritten by \"" + spelling +
                                    "\", which fills " + nameOf(field) + " too",
                                earlier));
  }
  labelWriters_[index] = spelling;
  noteOrigin<FIELD_T>(index, placeOf(value));
  reportZeroByte(value, spelling, Level::Piece);
  return overwritten;
}

void JsonWatcher::labelsSkipped(const Json::Value& piece) {
  for (const LabelKey& row : kLabelFields) {
    for (const char* spelling : {row.spelling, row.secondSpelling}) {
      const Json::Value* value = member(piece, spelling);
      if (value == nullptr) continue;
      if (!value->isString()) {
        reportWrongType(*value, spelling, "a text", Level::Piece);
        continue;
      }
      report(rules::kLabelNotRead, Severity::Warning, placeOfKey(*value),
             "\"" + std::string(spelling) +
                 "\" is not read because the piece has no text under \"Field1\"",
             spelling)
          .loses = row.spelling;
    }
  }
}

void JsonWatcher::rightAngle135() {
  const OriginId id = trace<CUT_T>()[fieldOf<CUT_T>(&CUT_T::dxB)];
  report(rules::kAngle135, Severity::Note, traced_.origins[id].place,
         "\"dxB\": \"135\" is stored as \"45\", \"sxB\" would stay as it is", "dxB");
}

void JsonWatcher::ends(Level level, const Json::Value& element) {
  reportNoObject(element, level);
  reportStrangers(element, level);
  Absent absent;
  switch (level) {
    case Level::Header:
      collectAbsent<json_keys::kHeaderTable>(reader_.data, absent);
      break;
    case Level::Bar:
      collectAbsent<json_keys::kBarTable>(reader_.curBar, absent);
      break;
    case Level::Piece:
      collectAbsent<json_keys::kPieceTable>(reader_.curPiece, absent);
      collectAbsent<json_keys::kLabelFields>(reader_.curField, absent);
      collectAbsent<json_keys::kCutTable>(reader_.curCut, absent);
      break;
    case Level::Cut:  // what it lacks is told of its piece
      break;
    case Level::Work:
      collectAbsent<json_keys::kWorkTable>(reader_.curWork, absent);
      break;
  }
  if (absent.never != 0) missing_.add(level, absent.never, false, here(), placeOf(element));
  reportStayed(absent.stayed, placeOf(element));
  keepTrace(level, placeOf(element));
}

void JsonWatcher::bars(const Json::Value& root, const Json::Value* taken) {
  for (const char* key : {json_keys::kBars, json_keys::kBarsSecond}) {
    const Json::Value* value = member(root, key);
    if (value == nullptr || value == taken) continue;
    if (value->isArray()) {
      reportShadowed(*value, *taken, key, json_keys::kBars, Level::Header);
    } else {
      reportWrongType(*value, key, "an array", Level::Header);
    }
  }
}

void JsonWatcher::leads(Level level, const Json::Value& object, const char* key,
                        const Json::Value* taken) {
  const Json::Value* value = member(object, key);
  if (value == nullptr || taken != nullptr) return;
  const bool isCut = std::string_view(key) == json_keys::kCutOfPiece;
  reportWrongType(*value, key, isCut ? "an object" : "an array", level);
}

}  // namespace desk::check
