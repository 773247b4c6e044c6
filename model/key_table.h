// The form of the key tables: which key of a job file fills which field of a record, and how.
//
// There is one table per record and format. The readers loop over the tables, and everything else
// that knows keys comes from them too or is tested against them. Each table checks itself when it
// is compiled: no spelling and no field stands in it twice, and no field of its record is
// forgotten.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace model {

/// The levels of a job, from the root down. Each has a key table of its own.
enum class Level { Header, Bar, Piece, Cut, Work };

/// What a key must hold and how it is stored.
enum class KeyKind {
  Text,         ///< a text, stored as it is
  IntegerText,  ///< an integer, stored as its decimal text
  Integer,      ///< an integer, stored as a double
  Number,       ///< a number, stored as a double
  Flag,         ///< true or false
  Required,     ///< a text that must be there and is not stored
  Ignored,      ///< a text that is never stored
};

/// The field that a key fills. Which member is set follows from the key's kind.
template <class Record>
union FieldOf {
  constexpr FieldOf(std::nullptr_t) : none(nullptr) {}
  constexpr FieldOf(std::string Record::*field) : text(field) {}
  constexpr FieldOf(double Record::*field) : number(field) {}
  constexpr FieldOf(bool Record::*field) : flag(field) {}

  std::nullptr_t none;
  std::string Record::*text;  ///< Text, IntegerText
  double Record::*number;     ///< Integer, Number
  bool Record::*flag;         ///< Flag
};

/// One row of a key table.
template <class Record>
struct Key {
  const char* spelling;        ///< tried first
  const char* secondSpelling;  ///< tried when the first is absent or of the wrong kind; may be null
  KeyKind kind;
  FieldOf<Record> field;
};

/// Whether two rows fill the same field.
template <class Record>
constexpr bool fillSameField(const Key<Record>& a, const Key<Record>& b) {
  const auto isText = [](KeyKind kind) {
    return kind == KeyKind::Text || kind == KeyKind::IntegerText;
  };
  const auto isNumber = [](KeyKind kind) {
    return kind == KeyKind::Integer || kind == KeyKind::Number;
  };
  if (isText(a.kind) && isText(b.kind)) return a.field.text == b.field.text;
  if (isNumber(a.kind) && isNumber(b.kind)) return a.field.number == b.field.number;
  return a.kind == KeyKind::Flag && b.kind == KeyKind::Flag && a.field.flag == b.field.flag;
}

/// Whether no field is filled by two rows of a table. A table that has as many rows as its record
/// has fields thus fills each of them.
template <class Row, std::size_t count>
constexpr bool fieldsAreUnique(const Row (&rows)[count]) {
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (fillSameField(rows[i], rows[j])) return false;
    }
  }
  return true;
}

/// Whether no spelling occurs twice in a table.
template <class Row, std::size_t count>
constexpr bool spellingsAreUnique(const Row (&rows)[count]) {
  std::string_view seen[2 * count] = {};
  std::size_t known = 0;
  for (const Row& row : rows) {
    for (const char* spelling : {row.spelling, row.secondSpelling}) {
      if (spelling == nullptr) continue;
      for (std::size_t i = 0; i < known; ++i) {
        if (seen[i] == spelling) return false;
      }
      seen[known++] = spelling;
    }
  }
  return true;
}

}  // namespace model
