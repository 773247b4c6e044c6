// The script module in words: its functions, the rows they answer with and the codes of a load.
// The one place from which the stub and the tables in docs/manual.md take theirs.
#pragma once

#include <string>
#include <vector>

namespace desk::editor {

struct Parameter {
  const char* name;
  const char* text;  ///< all parameters are texts
};

/// One script function.
struct FunctionNote {
  const char* name;
  const char* text;  ///< one or two sentences
  std::vector<Parameter> parameters;
  const char* result;      ///< type in the stub
  const char* resultText;  ///< what the result holds
};

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

/// The functions: loading, queries, progress.
const std::vector<FunctionNote>& functionNotes();

/// The kinds of rows. Keys and types are those of the script commands.
std::vector<RowType> rowTypes();

/// The codes of the readers. A download that fails answers with a code of its own.
const std::vector<CodeNote>& codeNotes();

}  // namespace desk::editor
