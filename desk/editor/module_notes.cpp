#include "desk/editor/module_notes.h"

#include <algorithm>
#include <iterator>

#include "module/script_rows.h"

namespace desk::editor {

namespace {

template <class Row>
RowType rowType(const char* name, const char* text) {
  RowType type{name, text, {}};
  for (const row_keys::Key<Row>& key : script_rows::KeysOf<Row>::keys) {
    type.keys.push_back({key.key, key.cell.isNumber() ? "number" : "string", key.note});
  }
  for (std::size_t i = 0; i < script_rows::KeysOf<Row>::optional; ++i)
    type.keys[i].isOptional = true;
  return type;
}

RowType loadResult() {
  return {"LoadResult",
          "What a loading function answers with.",
          {{"errorCode", "integer", "0, or what went wrong"},
           {"info", "string", "the same as a message in Chinese"}}};
}

}  // namespace

const char* const kModuleName = "cus_ParseModule";

std::vector<script_functions::Words> functionNotes() {
  const auto& rows = script_functions::kWords.rows;
  std::vector<script_functions::Words> notes(std::begin(rows), std::end(rows));
  std::stable_partition(notes.begin(), notes.end(), [](const script_functions::Words& words) {
    return words.result == std::string(script_functions::kLoadResult);
  });
  return notes;
}

std::vector<RowType> rowTypes() {
  using namespace script_rows;
  return {loadResult(),
          rowType<Work>("Work", "One machining work on a piece, a row of get_work."),
          rowType<Cut>("Cut", "One cut, a row of get_cut."),
          rowType<Hole>("Hole", "One distinct work of a JSON job, a row of get_hole."),
          rowType<Label>("Label", "The label of one piece, a row of get_print."),
          rowType<Dimensions>("Dimensions", "Dimensions of a piece, a row of get_Dimensions.")};
}

const std::vector<CodeNote>& codeNotes() {
  static const std::vector<CodeNote> kNotes = {
      {0, "loaded"},
      {-2, "no such file, or it is no document"},
      {-3, "the header declares no version \"1.0\""},
      {-4, "the bars could not be read: \"Version\" is another text while \"version\" is \"1.0\""},
      {-5, "the pieces could not be read"},
      {-6, "the works could not be read"},
  };
  return kNotes;
}

}  // namespace desk::editor
