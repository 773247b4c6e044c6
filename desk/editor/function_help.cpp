#include <algorithm>
#include <cstring>

#include "desk/base/text.h"
#include "desk/editor/module_notes.h"

namespace desk::editor {

namespace {

std::string signatureOf(const script_functions::Words& words) {
  std::string names;
  for (const script_functions::Parameter& parameter : words.parameters) {
    if (parameter.name == nullptr) break;
    names += (names.empty() ? "" : ", ") + std::string(parameter.name);
  }
  return std::string(words.name) + "(" + names + ")";
}

/// A name and what it is, in lines that start behind the longest name.
std::string entry(const std::string& name, const std::string& text, std::size_t column,
                  std::size_t columns) {
  std::string line = "  " + name;
  line.resize(std::max(line.size() + 2, column), ' ');
  return wrapped(line + text, columns, column);
}

std::string firstSentence(const std::string& text) {
  return text.substr(0, text.find(". ")) + (text.find(". ") == std::string::npos ? "" : ".");
}

std::string parameterHelp(const script_functions::Words& words, std::size_t columns) {
  std::size_t column = 0;
  std::string text;
  for (const script_functions::Parameter& parameter : words.parameters) {
    if (parameter.name != nullptr) column = std::max(column, std::strlen(parameter.name) + 4);
  }
  for (const script_functions::Parameter& parameter : words.parameters) {
    if (parameter.name != nullptr) text += entry(parameter.name, parameter.text, column, columns);
  }
  return text;
}

std::string rowHelp(const script_functions::Words& words, std::size_t columns) {
  const std::string result = words.result;
  for (const RowType& row : rowTypes()) {
    if (result.substr(0, result.find('[')) != row.name) continue;
    std::size_t column = 0;
    for (const RowNote& key : row.keys) column = std::max(column, key.key.size() + 4);
    std::string text;
    for (const RowNote& key : row.keys) text += entry(key.key, key.text, column, columns);
    return text;
  }
  return "";
}

}  // namespace

std::string helpOf(const script_functions::Words& words, std::size_t columns) {
  const std::string rows = rowHelp(words, columns);
  const std::string answer =
      "Answers with " + std::string(words.resultText) + (rows.empty() ? "." : ":");
  return signatureOf(words) + "\n" + wrapped(words.text, columns) + parameterHelp(words, columns) +
         wrapped(answer, columns) + rows;
}

std::string moduleHelp(const std::string& shortName, std::size_t columns) {
  std::string text = shortName + " is the module " + kModuleName + ":\n";
  for (const script_functions::Words& words : functionNotes()) {
    text += "  " + shortName + "." + signatureOf(words) + "\n" +
            wrapped("      " + firstSentence(words.text), columns, 6);
  }
  return text;
}

}  // namespace desk::editor
