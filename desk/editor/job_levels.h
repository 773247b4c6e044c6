// The keys of both job formats, level by level, as those who write jobs need to know them.
#pragma once

#include <array>
#include <iterator>
#include <string>
#include <vector>

#include "model/key_table.h"

namespace desk::editor {

/// One key of a level.
struct WrittenKey {
  std::string name;           ///< in the spelling that writers should use
  std::string otherSpelling;  ///< that the reader takes too; empty for none
  model::KeyKind kind;
  model::TextForm form;
  bool isRequired;                   ///< in the strict form
  std::string text;                  ///< what it is for
  std::vector<std::string> answers;  ///< the values of scripts that show it: "get_cut BarName"
  std::string addition;              ///< what holds in this format only, or empty

  /// All of that in one line.
  std::string description() const;
};

/// A key that leads to the next level. An array may be missing: then there are no elements, not
/// those of somebody else.
struct Children {
  std::string key;
  std::string otherSpelling;  ///< empty for none
  std::string level;
  bool isArray;  ///< else one object, which the strict form requires
  std::string text;
};

/// One level of a job: header, bar, piece, cut or work.
struct Level {
  std::string name;
  std::string description;
  std::vector<WrittenKey> keys;    ///< in the order of the readers' tables
  std::vector<Children> children;  ///< in JSON jobs
};

/// What a text of this form looks like, for JSON Schema and XSD alike: a regular expression for the
/// whole of it. Empty for any text.
std::string patternOf(model::TextForm form);

/// In the order of `model::Level`.
using JobLevels = std::array<Level, std::size(model::kLevels)>;

/// The levels of a JSON job. The label fields stand among the keys of the piece.
JobLevels jsonLevels();

/// The levels of an XML job.
JobLevels xmlLevels();

}  // namespace desk::editor
