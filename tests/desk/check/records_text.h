// Records as text, so that tests can compare all of their fields at once.
#pragma once

#include <iostream>
#include <set>
#include <string>

#include "desk/check/watcher.h"

namespace test_support {

/// Swallows what the readers write while it lives.
class Quiet {
 public:
  Quiet() : before_(std::cout.rdbuf(nullptr)) {}
  ~Quiet() {
    std::cout.rdbuf(before_);
    std::cout.clear();
  }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  std::streambuf* before_;
};

template <class Keys, class Record>
std::string fieldsText(const Keys& keys, const Record& record) {
  std::string text;
  for (const auto& key : keys) text += desk::check::textOf(record, key) + "\x1f";
  return text + "\n";
}

inline std::string pieceText(const PIECE_CHILD_SECOND_T& piece) {
  std::string text = fieldsText(json_keys::kPiece, piece) +
                     fieldsText(json_keys::kLabelFields, piece.Fields) + piece.Length + "\x1f" +
                     piece.sxB + "\x1f" + piece.dxB + "\n";
  for (const WORK_T& work : piece.work) text += fieldsText(json_keys::kWork, work);
  return text;
}

inline std::string barText(const BAR_T& bar) {
  std::string text = fieldsText(json_keys::kBar, bar);
  for (const PIECE_CHILD_SECOND_T& piece : bar.piece) text += pieceText(piece);
  return text;
}

/// The job of a reader and the elements that it keeps for the next one.
template <class Reader>
std::string readerText(const Reader& reader) {
  std::string text = fieldsText(json_keys::kHeader, reader.data);
  for (const BAR_T& bar : reader.data.Bar) text += barText(bar);
  return text + "kept\n" + barText(reader.curBar) + pieceText(reader.curPiece) +
         fieldsText(json_keys::kCut, reader.curCut) +
         fieldsText(json_keys::kLabelFields, reader.curField) +
         fieldsText(json_keys::kWork, reader.curWork);
}

/// "element: key=value" for every value that a field has and the element by itself would not have.
using Carried = std::set<std::string>;

template <class Keys, class Record>
void addCarried(const Keys& keys, const Record& read, const Record& alone,
                const desk::job::Element& element, Carried& carried) {
  for (const auto& key : keys) {
    const std::string value = desk::check::textOf(read, key);
    if (value == desk::check::textOf(alone, key)) continue;
    carried.insert(describe(element) + ": " + key.spelling + "=" + value);
  }
}

inline CUT_T cutOf(const PIECE_T& piece) {
  return {piece.Length, piece.sxB, piece.dxB};
}

/// Whether a value is one that a new record has: then it cannot be seen that it was carried over.
inline bool isUnseen(const std::string& carried) {
  const std::string value = carried.substr(carried.find('=') + 1);
  return value.empty() || value == "0" || value == "false";
}

/// What one of the two has and the other has not; empty when they are equal.
inline std::string difference(const Carried& told, const Carried& real) {
  std::string text;
  for (const std::string& one : told) {
    text += real.count(one) != 0 || isUnseen(one) ? "" : "only told: " + one + "\n";
  }
  for (const std::string& one : real) text += told.count(one) != 0 ? "" : "not told: " + one + "\n";
  return text;
}

/// The same from what a check says of one of its files.
inline Carried carriedIn(const desk::check::Findings& findings, int file) {
  Carried carried;
  for (const desk::check::Finding& finding : findings) {
    if (finding.place.file != file) continue;
    for (const desk::check::CarriedValue& value : finding.carried) {
      carried.insert(describe(finding.element) + ": " + value.key + "=" + value.value);
    }
  }
  return carried;
}

}  // namespace test_support
