// Job files made from the key tables: every key in every element, so that nothing is carried over
// from the job before.
#pragma once

#include <string>

#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace made_jobs {

/// How large a job is, and a text that all of its values hold.
struct Size {
  int bars = 2;
  int pieces = 2;  ///< of each bar
  int works = 2;   ///< of each piece
  std::string mark = "a";
};

inline std::string valueOf(model::KeyKind kind, const std::string& mark) {
  switch (kind) {
    case model::KeyKind::IntegerText:
    case model::KeyKind::Integer:
      return "7";
    case model::KeyKind::Number:
      return "12.5";
    case model::KeyKind::Flag:
      return "true";
    default:
      return "\"" + mark + "\"";
  }
}

template <class Record, std::size_t count>
std::string jsonMembers(const model::Key<Record> (&keys)[count], const std::string& mark) {
  std::string text;
  for (const model::Key<Record>& key : keys) {
    const bool version = std::string(key.spelling) == "Version";
    text += std::string("\"") + key.spelling +
            "\":" + (version ? "\"1.0\"" : valueOf(key.kind, mark)) + ",";
  }
  return text;
}

inline std::string list(int count, const std::string& element, const std::string& separator) {
  std::string text;
  for (int i = 0; i < count; ++i) text += (i == 0 ? "" : separator) + element;
  return text;
}

inline std::string json(const Size& size) {
  using namespace json_keys;
  std::string labels;
  for (const LabelKey& key : kLabelFields) {
    labels += std::string("\"") + key.spelling + "\":\"" + size.mark + "\",";
  }
  const std::string work = "{" + jsonMembers(kWork, size.mark) + "\"x\":0}";
  const std::string piece = "{" + jsonMembers(kPiece, size.mark) + labels + "\"cut\":{" +
                            jsonMembers(kCut, "90") + "\"x\":0},\"work\":[" +
                            list(size.works, work, ",") + "]}";
  const std::string bar =
      "{" + jsonMembers(kBar, size.mark) + "\"piece\":[" + list(size.pieces, piece, ",") + "]}";
  return "{" + jsonMembers(kHeader, size.mark) + "\"Bar\":[" + list(size.bars, bar, ",") + "]}";
}

template <class Record, std::size_t count>
std::string xmlElements(const model::Key<Record> (&keys)[count], const std::string& mark) {
  std::string text;
  for (const model::Key<Record>& key : keys) {
    const std::string name = key.spelling;
    const bool number = key.kind == model::KeyKind::Number || name == "Length" || name == "MaxY" ||
                        name == "MaxZ" || name == "BarNumber";
    text += "<" + name + ">" +
            (name == "Version" ? "1.0"
             : number          ? "7"
                               : mark) +
            "</" + name + ">";
  }
  return text;
}

inline std::string xml(const Size& size) {
  using namespace xml_elements;
  const std::string work = "<Work>" + xmlElements(kWork, size.mark) + "</Work>";
  const std::string piece = "<Piece>" + xmlElements(kPiece, size.mark) + "<Cut>" +
                            xmlElements(kCut, size.mark) + "</Cut>" + list(size.works, work, "") +
                            "</Piece>";
  const std::string bar =
      "<Bar>" + xmlElements(kBar, size.mark) + list(size.pieces, piece, "") + "</Bar>";
  return "<Job>" + xmlElements(kHeader, size.mark) + list(size.bars, bar, "") + "</Job>";
}

}  // namespace made_jobs
