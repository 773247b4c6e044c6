#include "fuzz/job_text.h"

#include <cstdio>

#include "json/json_keys.h"

namespace fuzzing {
namespace {

/// Every text of a record that its key table names.
template <class Record, std::size_t count>
std::string textByKeys(const model::Key<Record> (&keys)[count], const Record& record) {
  std::string text;
  for (const model::Key<Record>& key : keys) {
    const bool isText = key.kind == model::KeyKind::Text || key.kind == model::KeyKind::IntegerText;
    if (isText) text += textOf(record.*key.field.text);
  }
  return text;
}

std::string textOfPiece(const PIECE_CHILD_SECOND_T& piece) {
  std::string text = textByKeys(json_keys::kPiece, piece);
  for (const json_keys::LabelKey& key : json_keys::kLabelFields) {
    text += textOf(piece.Fields.*key.field);
  }
  return text + textOf(piece.Length) + textOf(piece.sxB) + textOf(piece.dxB) + "works\n" +
         textOfAll(piece.work);
}

}  // namespace

std::string textOf(const std::string& text) {
  return std::to_string(text.size()) + ":" + text + ",";
}

std::string textOf(double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%a,", number);
  return text;
}

std::string textOf(const WORK_T& work) {
  return textOf(work.Name) + textOf(work.ProfiLav) + textOf(work.PositionX) +
         textOf(work.PositionY) + textOf(work.PositionZ);
}

std::string textOf(const RETURNACUT_T& cut) {
  return textOf(cut.BarNumber) + textOf(cut.Length) + textOf(cut.CutLength) + textOf(cut.SxB) +
         textOf(cut.DxB) + textOf(cut.CutNumBer) + textOf(cut.OrderCode) + textOf(cut.BarName) +
         textOf(cut.PieceNumber);
}

std::string textOf(const tagHOHEINFO& hole) {
  return textOf(hole.name) + textOf(hole.length) + textOf(hole.width) + textOf(hole.height);
}

std::string textOf(const PRINT_T& label) {
  return textOf(label.sProfileCode) + textOf(label.sProfileName) + textOf(label.sProfileLength) +
         textOf(label.sNameProduct) + textOf(label.sColor) + textOf(label.sIndoorColor) +
         textOf(label.sOutdoorColor) + textOf(label.sLengthProduct) + textOf(label.sPosition) +
         textOf(label.sWindow) + textOf(label.sCutAngle) + textOf(label.sProcess) +
         textOf(label.sMaterialHeight);
}

std::string textOf(const DATA_T& job) {
  std::string text = textByKeys(json_keys::kHeader, job) + (job.success ? "yes\n" : "no\n");
  for (const BAR_T& bar : job.Bar) {
    text += textByKeys(json_keys::kBar, bar) + "pieces\n";
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) text += textOfPiece(piece) + "\n";
  }
  return text;
}

}  // namespace fuzzing
