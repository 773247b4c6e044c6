#include "desk/editor/editor_files.h"
#include "desk/editor/module_notes.h"

namespace desk::editor {

namespace {

const std::string kPrefix = std::string(kModuleName) + ".";

std::string alias() {
  std::string text = "---Result code of a load. Other codes are the downloader's own.\n---@alias " +
                     kPrefix + "Code\n";
  for (const CodeNote& note : codeNotes()) {
    text += "---| " + std::to_string(note.code) + " # " + note.text + "\n";
  }
  return text + "---| integer\n\n";
}

std::string rowClass(const RowType& row) {
  std::string text = std::string("---") + row.text + "\n---@class " + kPrefix + row.name + "\n";
  for (const RowNote& key : row.keys) {
    const std::string type = key.key == "errorCode" ? kPrefix + "Code" : key.type;
    text += "---@field " + key.key + (key.isOptional ? "? " : " ") + type + " " + key.text + "\n";
  }
  return text + "\n";
}

std::string function(const script_functions::Words& note) {
  std::string text = std::string("---") + note.text + "\n";
  std::string names;
  for (const script_functions::Parameter& parameter : note.parameters) {
    if (parameter.name == nullptr) break;
    text += std::string("---@param ") + parameter.name + " string " + parameter.text + "\n";
    names += (names.empty() ? "" : ", ") + std::string(parameter.name);
  }
  const std::string result = note.result;
  const std::string type = result == "string" ? result : kPrefix + result;
  return text + "---@return " + type + " # " + note.resultText + "\nfunction " + kPrefix +
         note.name + "(" + names + ") end\n\n";
}

}  // namespace

std::string luaStub() {
  const std::string name = kModuleName;
  std::string text = "---@meta " + name + "\n-- luacheck: ignore\n\n" + alias();
  for (const RowType& row : rowTypes()) text += rowClass(row);
  text += "---Loads cutting jobs and answers questions about them. Also a global of that name.\n";
  text += "---@class " + name + "\n" + name + " = {}\n\n";
  for (const script_functions::Words& note : functionNotes()) text += function(note);
  return text + "return " + name + "\n";
}

std::string luacheckConfig() {
  const std::string name = kModuleName;
  std::string text = "-- For the .luacheckrc of a folder of panel scripts.\nstds." + name +
                     " = {\n  read_globals = {\n    " + name + " = {\n      fields = {\n";
  for (const script_functions::Words& note : functionNotes()) {
    text += std::string("        ") + note.name + " = {},\n";
  }
  return text + "      },\n    },\n  },\n}\nstd = \"lua53+" + name + "\"\n";
}

}  // namespace desk::editor
