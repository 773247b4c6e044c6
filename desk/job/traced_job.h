// A job together with where each of its values was read.
#pragma once

#include <array>
#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "desk/base/numbers.h"
#include "desk/job/source_text.h"
#include "json/json_keys.h"
#include "model/job_records.h"

namespace desk::job {

/// A value as it was read from a file. Values that are carried over keep the origin they have.
struct Origin {
  Place place;
  Element element;
};

/// Index into TracedJob::origins. 0: never read, the field is as it was constructed.
using OriginId = std::uint32_t;

using model::Level;

/// The fields of a record and the level whose keys fill them. The JSON tables name them all; XML
/// fills some of the same.
template <class Record>
struct FieldsOf;
template <>
struct FieldsOf<DATA_T> {
  static constexpr const auto& keys = json_keys::kHeader;
  static constexpr Level level = Level::Header;
};
template <>
struct FieldsOf<BAR_T> {
  static constexpr const auto& keys = json_keys::kBar;
  static constexpr Level level = Level::Bar;
};
template <>
struct FieldsOf<PIECE_CHILD_SECOND_T> {
  static constexpr const auto& keys = json_keys::kPiece;
  static constexpr Level level = Level::Piece;
};
template <>
struct FieldsOf<CUT_T> {
  static constexpr const auto& keys = json_keys::kCut;
  static constexpr Level level = Level::Cut;
};
template <>
struct FieldsOf<FIELD_T> {
  static constexpr const auto& keys = json_keys::kLabelFields;
  static constexpr Level level = Level::Piece;
};
template <>
struct FieldsOf<WORK_T> {
  static constexpr const auto& keys = json_keys::kWork;
  static constexpr Level level = Level::Work;
};

/// One origin per field of a record, in the order of `FieldsOf`.
template <class Record>
using Trace = std::array<OriginId, std::size(FieldsOf<Record>::keys)>;

/// The index of the field that a key fills; the number of fields for a key that fills none.
template <class Record>
constexpr std::size_t fieldOf(const model::Key<Record>& key) {
  const auto& keys = FieldsOf<Record>::keys;
  std::size_t i = 0;
  while (i < std::size(keys) && !model::fillSameField(keys[i], key)) ++i;
  return i;
}

constexpr std::size_t fieldOf(const json_keys::LabelKey& key) {
  std::size_t i = 0;
  while (!fillSameField(json_keys::kLabelFields[i], key)) ++i;
  return i;
}

/// The keys of a table.
template <class Table>
constexpr const auto& keysIn(const Table& table) {
  if constexpr (std::is_array_v<Table>) {
    return table;
  } else {
    return table.keys;
  }
}

/// The same for each key of a table, found when the program is compiled.
template <const auto& table>
constexpr auto fieldsOf() {
  std::array<std::size_t, std::size(keysIn(table))> fields{};
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = fieldOf(keysIn(table)[i]);
  return fields;
}

/// The index of a text of a record.
template <class Record, class Base>
std::size_t fieldOf(std::string Base::*field) {
  return fieldOf(model::Key<Record>{nullptr, nullptr, model::KeyKind::Text, {field}});
}

/// The value of a field as text.
template <class Record>
std::string textOf(const Record& record, const model::Key<Record>& key) {
  using model::KeyKind;
  switch (key.kind) {
    case KeyKind::Text:
    case KeyKind::IntegerText:
      return record.*key.field.text;
    case KeyKind::Integer:
    case KeyKind::Number:
      return shortestText(record.*key.field.number);
    case KeyKind::Flag:
      return record.*key.field.flag ? "true" : "false";
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return "";
}

inline std::string textOf(const FIELD_T& record, const json_keys::LabelKey& key) {
  return record.*key.field;
}

struct WorkTrace {
  Trace<WORK_T> keys;
  Place place;
};

struct PieceTrace {
  Trace<PIECE_CHILD_SECOND_T> keys;
  Trace<CUT_T> cut;
  Trace<FIELD_T> labels;
  Place place;
  std::vector<WorkTrace> works;
};

struct BarTrace {
  Trace<BAR_T> keys;
  Place place;
  std::vector<PieceTrace> pieces;
};

/// What a reader holds after a read, element for element. Good for as long as the reader lives.
struct TracedJob {
  explicit TracedJob(const DATA_T& records) : job(records) {}

  const DATA_T& job;  ///< the reader's own records
  Trace<DATA_T> header{};
  Place place;                 ///< the root of the file read last
  std::vector<BarTrace> bars;  ///< as long as job.Bar, and so on below

  /// All values ever read, in the order of reading. The first one stands for "never read".
  std::vector<Origin> origins{1};

  OriginId add(const Place& where, const Element& element) {
    origins.push_back({where, element});
    return static_cast<OriginId>(origins.size() - 1);
  }
};

}  // namespace desk::job
