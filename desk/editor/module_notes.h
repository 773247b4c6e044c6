// The script module in words: its functions, the rows they answer with and the codes of a load.
// Functions and rows say
// themselves what they are; the codes are described here.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "module/script_functions.h"

namespace desk::editor {

/// One key of a row.
struct RowNote {
  std::string key;
  const char* type;  ///< "string", "number" or "integer"
  const char* text;
  bool isOptional = false;
};

/// One kind of row.
struct RowType {
  const char* name;  ///< in the stub, behind the module's name
  const char* text;
  std::vector<RowNote> keys;  ///< in the order in which they are set
};

/// One result code of a load.
struct CodeNote {
  int code;
  const char* text;
};

/// The name under which scripts require the module.
extern const char* const kModuleName;

/// The functions, those that load first.
std::vector<script_functions::Words> functionNotes();

/// What the prompt's help says of a function, in lines of up to `columns`: its arguments and the keys
/// of its rows.
std::string helpOf(const script_functions::Words& words, std::size_t columns);

/// The functions under the module's short name, each with a line.
std::string moduleHelp(const std::string& shortName, std::size_t columns);

/// The kinds of rows. Keys and types are those of the script commands.
std::vector<RowType> rowTypes();

/// The codes of the readers. A download that fails answers with a code of its own.
const std::vector<CodeNote>& codeNotes();

}  // namespace desk::editor
