// The keys of both job formats, level by level, as those who write jobs need to know them.
#pragma once

#include <string>
#include <vector>

#include "desk/editor/field_notes.h"
#include "model/key_table.h"

namespace desk::editor {

/// One key of a level, in the spelling that writers should use.
struct WrittenKey {
  std::string name;
  model::KeyKind kind;
  TextForm form;
  std::string description;  ///< with the script rows that hold the value
};

/// One level of a job: header, bar, piece, cut or work.
struct Level {
  std::string name;
  std::string description;
  std::vector<WrittenKey> keys;  ///< in the order of the readers' tables
};

struct JobLevels {
  Level header, bar, piece, cut, work;
};

/// The levels of a JSON job. The label fields stand among the keys of the piece.
JobLevels jsonLevels();

/// The levels of an XML job.
JobLevels xmlLevels();

}  // namespace desk::editor
