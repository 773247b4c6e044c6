// The form of the row tables: which key of a script's row shows which value of a row, and in words
// what that is.
#pragma once

#include "model/job_rows.h"

namespace row_keys {

/// A value of a row: a text up to its first zero byte, or a number where `text` is null.
struct Value {
  const char* text;
  double number;
  const void* source;  ///< the text or number of the job that it shows, if it shows one
};

/// The member of a row that a key shows.
template <class Row>
class Cell {
 public:
  constexpr Cell(model::Text Row::*member) : kind_(Kind::Text), text_(member) {}
  constexpr Cell(model::Number Row::*member) : kind_(Kind::Number), number_(member) {}
  constexpr Cell(model::DerivedText Row::*member) : kind_(Kind::Derived), derived_(member) {}
  constexpr Cell(model::ParsedNumber Row::*member) : kind_(Kind::Parsed), parsed_(member) {}

  constexpr bool isNumber() const { return kind_ == Kind::Number || kind_ == Kind::Parsed; }

  Value of(const Row& row) const {
    switch (kind_) {
      case Kind::Text:
        return textValue(row.*text_, row.*text_);
      case Kind::Derived:
        return textValue((row.*derived_).text, (row.*derived_).source);
      case Kind::Number:
        return {nullptr, *(row.*number_), row.*number_};
      case Kind::Parsed:
        break;
    }
    return {nullptr, (row.*parsed_).number, (row.*parsed_).text};
  }

 private:
  enum class Kind { Text, Number, Derived, Parsed };

  static Value textValue(model::Text text, model::Text source) {
    return {text->c_str(), 0.0, source};
  }

  Kind kind_;
  union {
    model::Text Row::*text_;
    model::Number Row::*number_;
    model::DerivedText Row::*derived_;
    model::ParsedNumber Row::*parsed_;
  };
};

/// The value that a cell of any kind shows. Not inlined: g++ 12 then warns of what cells of other
/// kinds would read.
template <class Row>
__attribute__((noinline)) Value valueOf(const Cell<Row>& cell, const Row& row) {
  return cell.of(row);
}

/// One key of a row, the value that it shows, and what that is in a few words for manuals and
/// editors.
template <class Row>
struct Key {
  const char* key;
  Cell<Row> cell;
  const char* note;
};

}  // namespace row_keys
