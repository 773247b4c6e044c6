// The form of the key tables: which key of a job file fills which field of a record, and how.
//
// There is one table per record and format. The readers loop over the tables, and everything else
// that knows keys comes from them too or is tested against them. Each table checks itself when it
// is compiled: no spelling and no field stands in it twice, and no field of its record is
// forgotten.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace model {

/// The levels of a job, from the root down. Each has a key table of its own.
enum class Level { Header, Bar, Piece, Cut, Work };

/// The name of a level in schemas, and what its elements are.
struct LevelRow {
  Level level;
  const char* name;
  const char* text;
};
inline constexpr LevelRow kLevels[] = {
    {Level::Header, "header", "A cutting job."},
    {Level::Bar, "bar", "A raw bar that pieces are cut from."},
    {Level::Piece, "piece", "A piece cut from its bar."},
    {Level::Cut, "cut", "The cut of a piece."},
    {Level::Work, "work", "One machining operation on a piece."},
};

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

// -------------------------------------------------------------------------------------------------
// What those who write jobs need to know. Schemas, editors and manuals are made from it; the
// readers loop over tables without it, so the plug-in does not carry it.

/// Whether a job in the strict form must have a key.
enum class Need { Always, Optional };

/// What a value should look like for those who read it, beyond its kind.
enum class TextForm {
  Any,
  Unit,     ///< of lengths
  Count,    ///< a whole number
  Measure,  ///< a plain decimal number: a place, or a length that may be 0
  Size,     ///< the same for a length without which nothing can be cut
  Angle,    ///< the same in degrees
  Side,     ///< the number of a side of the profile
};

/// How jobs write the one unit that there is. No reader looks at it.
inline constexpr std::string_view kMillimetres[] = {"mm", "MM", "Mm", "毫米"};

/// The numbers that a form allows. The readers take others too.
struct Range {
  double least;
  double most;
  bool isOpen;  ///< both ends are excluded

  constexpr bool holds(double number) const {
    return isOpen ? least < number && number < most : least <= number && number <= most;
  }
};

constexpr Range rangeOf(TextForm form) {
  constexpr double kEndless = std::numeric_limits<double>::infinity();
  switch (form) {
    case TextForm::Any:
    case TextForm::Unit:
      return {-kEndless, kEndless, false};
    case TextForm::Count:
    case TextForm::Measure:
      return {0.0, kEndless, false};
    case TextForm::Size:
      return {0.0, kEndless, true};
    case TextForm::Angle:
      return {0.0, 180.0, true};
    case TextForm::Side:  // machines count the four sides and two ends from 0 or from 1
      return {0.0, 6.0, false};
  }
  return {-kEndless, kEndless, false};
}

/// What a field is for. Which values of scripts show it is found out from the rows that they get.
struct Note {
  Need need = Need::Always;
  TextForm form = TextForm::Any;
  const char* text = nullptr;      ///< one sentence, for every format
  const char* addition = nullptr;  ///< one more, for this format only; or null
};

/// A key and what it is for. There is no such row without words.
template <class Record>
struct DescribedKey {
  constexpr DescribedKey(const char* spelling, const char* secondSpelling, KeyKind kind,
                         FieldOf<Record> field, Need need, TextForm form, const char* text,
                         const char* addition = nullptr)
      : key{spelling, secondSpelling, kind, field}, note{need, form, text, addition} {}

  Key<Record> key;
  Note note;
};

/// The keys of a table of rows, which are what the readers loop over.
template <class Record, std::size_t count>
struct KeyTable {
  Key<Record> keys[count];
};

template <template <class> class Row, class Record, std::size_t count, std::size_t... i>
constexpr KeyTable<Record, count> keysOf(const Row<Record> (&rows)[count],
                                         std::index_sequence<i...>) {
  return {{rows[i].key...}};
}
template <template <class> class Row, class Record, std::size_t count>
constexpr KeyTable<Record, count> keysOf(const Row<Record> (&rows)[count]) {
  return keysOf(rows, std::make_index_sequence<count>());
}

}  // namespace model
