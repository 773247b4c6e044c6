#include "desk/check/json_shadow.h"

#include "desk/check/json_values.h"
#include "desk/check/rules.h"
#include "json/json_values.h"
#include "model/assembly.h"

namespace desk::check {

namespace {

using model::Key;

constexpr int kDone = 0;
constexpr int kNoHeader = -3;
constexpr int kNoBar = -4;

}  // namespace

int JsonShadow::read(const Json::Value& root, const JsonText& text, const Sources& sources,
                     Findings& findings) {
  start(sources, findings);
  text_ = &text;
  state_.traced.place = placeOf(root);
  state_.traced.job.Bar.clear();
  state_.traced.bars.clear();
  if (!declaresVersion(root)) {
    reportVersion(root, kNoHeader);
    return kNoHeader;
  }
  Traced<DATA_T> header{std::move(state_.traced.job), state_.traced.header};
  readKeys(root, json_keys::kHeader, header, Level::Header, {});
  std::vector<Stayed> stayed;
  collectStayed(json_keys::kHeader, header, Level::Header, {}, stayed);
  state_.traced.job = std::move(header.record);
  state_.traced.header = header.trace;
  reportStayed(stayed, {}, placeOf(root));
  reportStrangers(root, Level::Header, {});
  return readBars(root);
}

int JsonShadow::readBars(const Json::Value& root) {
  using namespace json_keys;
  const Json::Value* bars = structure(root, kBars, Json::arrayValue, Level::Header, {});
  const Json::Value* second = structure(root, kBarsSecond, Json::arrayValue, Level::Header, {});
  if (bars != nullptr && second != nullptr) {
    reportShadowed(*second, *bars, kBarsSecond, kBars, Level::Header, {});
  }
  if (bars == nullptr) bars = second;
  if (state_.traced.job.Version != kVersion) {
    reportVersion(root, bars == nullptr ? kDone : kNoBar);
    return bars == nullptr ? kDone : kNoBar;
  }
  if (bars == nullptr) return kDone;
  Element here;
  for (const Json::Value& bar : *bars) {
    ++here.bar;
    readBar(bar, here);
  }
  return kDone;
}

void JsonShadow::readBar(const Json::Value& bar, const Element& here) {
  readKeys(bar, json_keys::kBar, state_.bar, Level::Bar, here);
  reportNoObject(bar, "bar", here);
  reportStrangers(bar, Level::Bar, here);
  std::vector<Stayed> stayed;
  collectStayed(json_keys::kBar, state_.bar, Level::Bar, here, stayed);
  reportStayed(stayed, here, placeOf(bar));

  state_.traced.bars.push_back({state_.bar.trace, placeOf(bar), {}});
  if (const auto* pieces = structure(bar, json_keys::kPieces, Json::arrayValue, Level::Bar, here)) {
    Element child = here;
    for (const Json::Value& piece : *pieces) {
      ++child.piece;
      readPiece(piece, child);
    }
  }
  model::appendFinished(state_.traced.job.Bar, state_.bar.record, &BAR_T::piece);
}

void JsonShadow::readPiece(const Json::Value& piece, const Element& here) {
  readKeys(piece, json_keys::kPiece, state_.piece, Level::Piece, here);
  readLabels(piece, here);
  readCut(piece, here);
  reportNoObject(piece, "piece", here);
  reportStrangers(piece, Level::Piece, here);
  std::vector<Stayed> stayed;
  collectStayed(json_keys::kPiece, state_.piece, Level::Piece, here, stayed);
  collectStayed(json_keys::kLabelFields, state_.labels, Level::Piece, here, stayed);
  collectStayed(json_keys::kCut, state_.cut, Level::Cut, here, stayed);
  reportStayed(stayed, here, placeOf(piece));

  std::vector<PieceTrace>& traces = state_.traced.bars.back().pieces;
  traces.push_back({state_.piece.trace, state_.cut.trace, state_.labels.trace, placeOf(piece), {}});
  if (const auto* works =
          structure(piece, json_keys::kWorks, Json::arrayValue, Level::Piece, here)) {
    Element child = here;
    for (const Json::Value& work : *works) {
      ++child.work;
      readWork(work, child);
    }
  }
  model::appendFinished(state_.bar.record.piece, state_.piece.record, &PIECE_T::work);
}

void JsonShadow::readCut(const Json::Value& piece, const Element& here) {
  const auto* cut = structure(piece, json_keys::kCutOfPiece, Json::objectValue, Level::Piece, here);
  CUT_T& current = state_.cut.record;
  if (cut != nullptr) {
    readKeys(*cut, json_keys::kCut, state_.cut, Level::Cut, here);
    reportStrangers(*cut, Level::Cut, here);
    if (current.dxB == "135") {
      current.dxB = "45";
      const OriginId id = state_.cut.trace[fieldOf<CUT_T>(&CUT_T::dxB)];
      report(rules::kAngle135, Severity::Note, state_.traced.origins[id].place,
             "\"dxB\": \"135\" is stored as \"45\", \"sxB\" would stay as it is", here, "dxB");
    }
  }
  PIECE_T& target = state_.piece.record;
  target.Length = current.Length;
  target.sxB = current.sxB;
  target.dxB = current.dxB;
}

void JsonShadow::readWork(const Json::Value& work, const Element& here) {
  readKeys(work, json_keys::kWork, state_.work, Level::Work, here);
  reportNoObject(work, "work", here);
  reportStrangers(work, Level::Work, here);
  std::vector<Stayed> stayed;
  collectStayed(json_keys::kWork, state_.work, Level::Work, here, stayed);
  reportStayed(stayed, here, placeOf(work));
  state_.piece.record.work.push_back(state_.work.record);
  state_.traced.bars.back().pieces.back().works.push_back({state_.work.trace, placeOf(work)});
}

template <class Record, std::size_t count>
void JsonShadow::readKeys(const Json::Value& object, const Key<Record> (&keys)[count],
                          Traced<Record>& current, Level level, const Element& here) {
  for (const Key<Record>& key : keys) {
    const Json::Value* taken = nullptr;
    for (const char* spelling : {key.spelling, key.secondSpelling}) {
      const Json::Value* value = member(object, spelling);
      if (value == nullptr) continue;
      if (taken != nullptr) {
        reportShadowed(*value, *taken, spelling, key.spelling, level, here);
      } else if (!json_keys::isOfKind(*value, key.kind)) {
        reportWrongType(*value, spelling, wordFor(key.kind), level, here);
      } else {
        taken = value;
        json_keys::store(*value, key, current.record);
        current.trace[fieldOf(key)] = state_.traced.add(placeOf(*value), here);
        reportZeroByte(*value, spelling, level, here);
      }
    }
  }
}

}  // namespace desk::check
