// The label fields of a piece, whose lower-case keys land in other fields.
#include "desk/check/json_shadow.h"
#include "desk/check/json_values.h"
#include "desk/check/rules.h"

namespace desk::check {

using json_keys::kLabelFields;
using json_keys::LabelKey;

namespace {

bool isText(const Json::Value* value) {
  return value != nullptr && value->isString();
}

const char* nameOf(std::string FIELD_T::*field) {
  for (const LabelKey& row : kLabelFields) {
    if (row.field == field) return row.spelling;
  }
  return "";
}

}  // namespace

void JsonShadow::readLabels(const Json::Value& piece, const Element& here) {
  const LabelKey& first = kLabelFields[0];
  if (!isText(member(piece, first.spelling)) && !isText(member(piece, first.secondSpelling))) {
    reportLabelsNotRead(piece, here);
    return;
  }
  std::vector<const char*> writers(std::size(kLabelFields), nullptr);
  for (const LabelKey& row : kLabelFields) readLabel(piece, row, here, writers);
  state_.piece.record.Fields = state_.labels.record;
}

void JsonShadow::reportLabelsNotRead(const Json::Value& piece, const Element& here) {
  for (const LabelKey& row : kLabelFields) {
    for (const char* spelling : {row.spelling, row.secondSpelling}) {
      const Json::Value* value = member(piece, spelling);
      if (value == nullptr) continue;
      if (!value->isString()) {
        reportWrongType(*value, spelling, "a text", Level::Piece, here);
        continue;
      }
      report(rules::kLabelNotRead, Severity::Warning, placeOfKey(*value),
             "\"" + std::string(spelling) +
                 "\" is not read because the piece has no text under \"Field1\"",
             here, spelling);
    }
  }
}

void JsonShadow::readLabel(const Json::Value& piece, const LabelKey& row, const Element& here,
                           std::vector<const char*>& writers) {
  const Json::Value* value = member(piece, row.spelling);
  const Json::Value* second = member(piece, row.secondSpelling);
  if (isText(value)) {
    storeLabel(piece, row.spelling, row.field, here, writers);
    if (second != nullptr) {
      reportShadowed(*second, *value, row.secondSpelling, row.spelling, Level::Piece, here);
    }
    return;
  }
  if (value != nullptr) reportWrongType(*value, row.spelling, "a text", Level::Piece, here);
  if (isText(second)) {
    storeLabel(piece, row.secondSpelling, row.secondField, here, writers);
    if (row.secondField == row.field) return;
    report(rules::kLabelMisplaced, Severity::Warning, placeOfKey(*second),
           "\"" + std::string(row.secondSpelling) + "\" fills " + nameOf(row.secondField) +
               "; write \"" + row.spelling + "\" for the field of that number",
           here, row.secondSpelling);
  } else if (second != nullptr) {
    reportWrongType(*second, row.secondSpelling, "a text", Level::Piece, here);
  }
}

void JsonShadow::storeLabel(const Json::Value& piece, const char* spelling,
                            std::string FIELD_T::*field, const Element& here,
                            std::vector<const char*>& writers) {
  std::size_t index = 0;
  while (kLabelFields[index].field != field) ++index;
  const Json::Value& value = *member(piece, spelling);
  if (const char* earlier = writers[index]) {
    const Json::Value& lost = *member(piece, earlier);
    report(rules::kShadowedKey, Severity::Warning, placeOfKey(lost),
           "\"" + std::string(earlier) + "\" is overwritten by \"" + spelling + "\", which fills " +
               nameOf(field) + " too",
           here, earlier);
  }
  writers[index] = spelling;
  state_.labels.record.*field = value.asString();
  state_.labels.trace[index] = state_.traced.add(placeOf(value), here);
  reportZeroByte(value, spelling, Level::Piece, here);
}

}  // namespace desk::check
