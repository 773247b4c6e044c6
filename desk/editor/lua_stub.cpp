#include "desk/editor/editor_files.h"
#include "desk/editor/module_notes.h"
#include "desk/panel/panel_words.h"

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

std::string panelFunction(const panel::FunctionWords& words) {
  std::string text = std::string("---") + words.text + "\n";
  std::string names;
  for (const panel::Parameter& parameter : words.parameters) {
    if (parameter.name == nullptr) break;
    text += std::string("---@param ") + parameter.name + " " + parameter.type + " " +
            parameter.text + "\n";
    const std::string name = parameter.name;
    names += (names.empty() ? "" : ", ") + name.substr(0, name.find('?'));
  }
  if (words.overload != nullptr) text += std::string("---@overload ") + words.overload + "\n";
  for (const char* result : words.results) {
    if (result != nullptr) text += std::string("---@return ") + result + "\n";
  }
  return text + "function panel." + words.name + "(" + names + ") end\n\n";
}

std::string checkedField(const char* name, const char* settings) {
  return std::string("        ") + name + " = {" + settings + "},\n";
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

std::string panelStub() {
  std::string text = "---@meta _\n-- luacheck: ignore\n\n---The table part, in cusdesk only.\n" +
                     std::string("---@class cusdesk.panel\n");
  for (const panel::FieldWords& field : panel::kFieldWords) {
    text += std::string("---@field ") + field.name + (field.isOptional ? "? " : " ") + field.type +
            " " + field.text + "\n";
  }
  text += "panel = {}\n\n";
  for (const panel::FunctionWords& words : panel::kFunctionWords) text += panelFunction(words);
  return text;
}

std::string luacheckConfig() {
  const std::string name = kModuleName;
  std::string text = "-- For the .luacheckrc of a folder of panel scripts.\nstds." + name +
                     " = {\n  read_globals = {\n    " + name + " = {\n      fields = {\n";
  for (const script_functions::Words& note : functionNotes()) text += checkedField(note.name, "");
  text += "      },\n    },\n    panel = {  -- in cusdesk panel only\n      fields = {\n";
  for (const panel::FunctionWords& words : panel::kFunctionWords) {
    text += checkedField(words.name, "");
  }
  for (const panel::FieldWords& field : panel::kFieldWords) {
    text += checkedField(field.name, field.isHandler ? "read_only = false" : "");
  }
  return text + "      },\n    },\n  },\n}\nstd = \"lua53+" + name + "\"\n";
}

}  // namespace desk::editor
