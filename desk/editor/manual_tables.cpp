#include <cmath>

#include "desk/base/numbers.h"
#include "desk/editor/editor_files.h"
#include "desk/editor/job_levels.h"
#include "desk/editor/module_notes.h"
#include "json/json_keys.h"

namespace desk::editor {

namespace {

using model::KeyKind;
using model::TextForm;
using Cells = std::vector<std::string>;

std::string line(const Cells& cells) {
  std::string text = "|";
  for (const std::string& cell : cells) text += (cell.empty() ? "" : " " + cell) + " |";
  return text + "\n";
}

std::string startOf(const std::string& marker, const Cells& head) {
  return "<!-- " + marker + " -->\n" + line(head) + line(Cells(head.size(), "---"));
}

std::string code(const std::string& text) {
  return text.empty() ? text : "`" + text + "`";
}

/// The script values that show a key: "`get_cut` `BarName`, ...".
std::string scriptsOf(const WrittenKey& key) {
  std::string text;
  for (const std::string& answer : key.answers) {
    const std::size_t blank = answer.find(' ');
    text += (text.empty() ? "" : ", ") + code(answer.substr(0, blank)) + " " +
            code(answer.substr(blank + 1));
  }
  return text;
}

std::string wordsOf(const WrittenKey& key) {
  return key.text + (key.addition.empty() ? "" : " " + key.addition);
}

bool isVersion(const WrittenKey& key) {
  return key.name == json_keys::kVersionKey.spelling;
}

/// What a form asks for behind the type of a value: " above 0". Empty when every number will do.
std::string boundsOf(TextForm form) {
  const model::Range range = model::rangeOf(form);
  if (!std::isfinite(range.least)) return "";
  const std::string least = shortestText(range.least);
  if (!std::isfinite(range.most)) return (range.isOpen ? " above " : " from ") + least;
  const std::string most = shortestText(range.most);
  return range.isOpen ? " between " + least + " and " + most : " from " + least + " to " + most;
}

/// The text that a key is to hold; empty when there are many.
std::string onlyTextOf(const WrittenKey& key) {
  if (isVersion(key)) return json_keys::kVersion;
  return key.form == TextForm::Unit ? std::string(model::kMillimetres[0]) : "";
}

std::string jsonType(const WrittenKey& key) {
  const std::string text = onlyTextOf(key);
  if (!text.empty()) return code('"' + text + '"');
  switch (key.kind) {
    case KeyKind::Flag:
      return "true or false";
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      return "integer" + boundsOf(key.form);
    case KeyKind::Number:
      return "number" + boundsOf(key.form);
    case KeyKind::Text:
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return key.form == TextForm::Any ? "text" : "text, a number" + boundsOf(key.form);
}

std::string xmlType(const WrittenKey& key) {
  const std::string text = onlyTextOf(key);
  if (!text.empty()) return code(text);
  if (key.form == TextForm::Count) return "whole number";
  return key.form == TextForm::Any ? "text" : "number" + boundsOf(key.form);
}

std::string jsonTable(const Level& level) {
  constexpr char kStays[] = "the value before stays";
  std::string text =
      startOf("keys: json " + level.name,
              {"Key", "Also read as", "Type", "What it is", "Scripts get it as", "If missing"});
  for (const WrittenKey& key : level.keys) {
    text += line({code(key.name), code(key.otherSpelling), jsonType(key), wordsOf(key),
                  scriptsOf(key), isVersion(key) ? "not loaded, -3" : kStays});
  }
  for (const Children& children : level.children) {
    text += line({code(children.key), code(children.otherSpelling),
                  children.isArray ? "array" : "object", children.text, "",
                  children.isArray ? "there are none" : kStays});
  }
  return text;
}

std::string xmlTable(const Level& level) {
  std::string text =
      startOf("keys: xml " + level.name,
              {"Element", "Holds", "What it is", "Scripts get it as", "If missing or empty"});
  for (const WrittenKey& key : level.keys) {
    const bool raises = key.kind == KeyKind::Number || key.kind == KeyKind::Required;
    text += line({code(key.name), xmlType(key), wordsOf(key), scriptsOf(key),
                  raises                         ? "loading raises"
                  : key.kind == KeyKind::Ignored ? "nothing"
                                                 : "the value before stays"});
  }
  return text;
}

std::string rowTable(const RowType& row) {
  std::string text = startOf(std::string("rows: ") + row.name, {"Key", "Type", "Holds"});
  for (const RowNote& key : row.keys) text += line({code(key.key), key.type, key.text});
  return text;
}

std::string codeTable() {
  std::string text = startOf("codes", {"`errorCode`", "Means"});
  for (const CodeNote& note : codeNotes()) text += line({std::to_string(note.code), note.text});
  return text + line({"other", "a download failed; the code is the downloader's own"});
}

}  // namespace

std::string manualTables() {
  std::string text = codeTable();
  for (const RowType& row : rowTypes()) text += "\n" + rowTable(row);
  for (const Level& level : jsonLevels()) text += "\n" + jsonTable(level);
  for (const Level& level : xmlLevels()) text += "\n" + xmlTable(level);
  return text;
}

}  // namespace desk::editor
