#include "desk/show/origins.h"

#include <algorithm>
#include <functional>

namespace desk::show {

namespace {

using job::Element;
using job::fieldOf;
using job::FieldsOf;
using job::Level;
using job::OriginId;
using model::KeyKind;

/// The origin of the value of a record that lies at an address; 0 for none.
template <class Record>
OriginId idIn(const Record& record, const job::Trace<Record>& trace, const void* value) {
  for (std::size_t i = 0; i < trace.size(); ++i) {
    const model::Key<Record>& key = FieldsOf<Record>::keys[i];
    const bool isText = key.kind == KeyKind::Text || key.kind == KeyKind::IntegerText;
    const bool isNumber = key.kind == KeyKind::Integer || key.kind == KeyKind::Number;
    if (isText && &(record.*key.field.text) == value) return trace[i];
    if (isNumber && &(record.*key.field.number) == value) return trace[i];
  }
  return 0;
}

OriginId idIn(const PIECE_CHILD_SECOND_T& piece, const job::PieceTrace& trace, const void* value) {
  if (&piece.Length == value) return trace.cut[fieldOf<CUT_T>(&CUT_T::Length)];
  if (&piece.sxB == value) return trace.cut[fieldOf<CUT_T>(&CUT_T::sxB)];
  if (&piece.dxB == value) return trace.cut[fieldOf<CUT_T>(&CUT_T::dxB)];
  return idIn(piece, trace.keys, value);
}

std::size_t indexOf(int number) {
  return static_cast<std::size_t>(number - 1);
}

constexpr std::less<const char*> kBefore;

}  // namespace

Origins::Origins(const job::TracedJob& job) : job_(job) {
  add(job.job.Bar, Level::Bar, {});
  Element bar;
  for (const BAR_T& one : job.job.Bar) {
    ++bar.bar;
    add(one.piece, Level::Piece, bar);
    Element piece = bar;
    for (const PIECE_CHILD_SECOND_T& each : one.piece) {
      ++piece.piece;
      add(each.work, Level::Work, piece);
    }
  }
  std::sort(records_.begin(), records_.end(),
            [](const Records& a, const Records& b) { return kBefore(a.begin, b.begin); });
}

template <class Record>
void Origins::add(const std::vector<Record>& records, Level level, const Element& parent) {
  if (records.empty()) return;
  const auto address = [](const Record* record) { return reinterpret_cast<const char*>(record); };
  const Record* const first = records.data();
  records_.push_back(
      {address(first), address(first + records.size()), sizeof(Record), level, parent});
}

Element Origins::elementOf(const void* value) const {
  const auto* const address = static_cast<const char*>(value);
  const auto next = std::upper_bound(
      records_.begin(), records_.end(), address,
      [](const char* wanted, const Records& one) { return kBefore(wanted, one.begin); });
  if (next == records_.begin()) return {};
  const Records& records = *(next - 1);
  if (!kBefore(address, records.end)) return {};
  const auto offset = static_cast<std::size_t>(address - records.begin);
  const int number = static_cast<int>(offset / records.size) + 1;
  Element element = records.parent;
  (records.level == Level::Bar     ? element.bar
   : records.level == Level::Piece ? element.piece
                                   : element.work) = number;
  return element;
}

OriginId Origins::idOf(const void* value, const Element& here) const {
  if (here.bar == 0) return 0;
  const BAR_T& bar = job_.job.Bar[indexOf(here.bar)];
  const job::BarTrace& barTrace = job_.bars[indexOf(here.bar)];
  if (here.piece == 0) return idIn(bar, barTrace.keys, value);
  const PIECE_CHILD_SECOND_T& piece = bar.piece[indexOf(here.piece)];
  const job::PieceTrace& trace = barTrace.pieces[indexOf(here.piece)];
  if (here.work == 0) return idIn(piece, trace, value);
  return idIn(piece.work[indexOf(here.work)], trace.works[indexOf(here.work)].keys, value);
}

Source Origins::of(const void* value) const {
  const Element here = elementOf(value);
  const OriginId id = idOf(value, here);
  if (id == 0) return {};
  const job::Origin& origin = job_.origins[id];
  return {origin.place.at.line, origin.place.at.column, !(origin.element == here),
          describe(origin.element)};
}

}  // namespace desk::show
