#include "desk/job/piece_text.h"

#include <vector>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "json/json_keys.h"

namespace desk::job {

std::string labelText(const PIECE_T& piece) {
  std::vector<std::string> texts;
  if (!piece.mark.empty()) texts.push_back(piece.mark);
  for (const auto& row : json_keys::kLabelFields) {
    if (const std::string& text = piece.Fields.*row.field; !text.empty()) texts.push_back(text);
  }
  return joined(texts, ", ");
}

std::string workText(const WORK_T& work) {
  return work.Name + " (side " + shortestText(work.ProfiLav) + ": " + shortestText(work.PositionX) +
         ", " + shortestText(work.PositionY) + ", " + shortestText(work.PositionZ) + ")";
}

Json::Value workValue(const WORK_T& work) {
  Json::Value value;
  for (const auto& key : json_keys::kWork) {
    value[key.spelling] = key.kind == model::KeyKind::Text
                              ? Json::Value(asUtf8(work.*key.field.text))
                              : Json::Value(work.*key.field.number);
  }
  return value;
}

}  // namespace desk::job
