#include <algorithm>
#include <sstream>

#include "desk/base/text.h"
#include "desk/commands/bash_completion.sh.h"
#include "desk/commands/commands.h"

namespace desk::commands {

namespace {

// What can stand in a place: words with blanks between, or one of these.
constexpr char kFiles[] = "@file";
constexpr char kFolders[] = "@dir";
constexpr char kAnything[] = "@any";

/// What the argument of an option can be, from its name in the help.
std::string argumentOf(const Option& option) {
  if (!option.values.empty()) return joined(option.values, " ");
  const std::string name = option.argument;
  if (name.find("DIR") != std::string::npos) return kFolders;
  for (const char* part : {"FILE", "PATH", "OUT"}) {
    if (name.find(part) != std::string::npos) return kFiles;
  }
  return kAnything;
}

/// The words that a branch stands for: a command and what comes behind it.
std::string pattern(const std::string& command, const std::string& behind) {
  std::string text = "'";
  text += command;
  return text + " " + behind + "'";
}

/// One branch of a case.
std::string branch(const std::string& words, const std::string& answer) {
  return "    " + words + ") echo '" + answer + "' ;;\n";
}

std::vector<std::string> spellings(const Option& option) {
  std::vector<std::string> words{std::string("--") + option.name};
  if (option.letter != '\0') words.push_back(std::string{'-', option.letter});
  return words;
}

std::string optionNames(const std::vector<Option>& options) {
  std::vector<std::string> words;
  words.reserve(options.size());
  for (const Option& option : options) words.push_back(spellings(option).front());
  return joined(words, " ");
}

std::string argumentBranches(const std::string& command, const std::vector<Option>& options) {
  std::string text;
  for (const Option& option : options) {
    if (option.argument == nullptr) continue;
    for (const std::string& word : spellings(option)) {
      text += branch(pattern(command, word), argumentOf(option));
    }
  }
  return text;
}

/// Whether `c` says that an operand may be left out or repeated.
bool isMark(char c) {
  return c == '[' || c == ']' || c == '.';
}

/// The branches for a command's operands as the help shows them: "FILE...", "schema|stub", or
/// "FILE... [bars|works]", where each word behind the first can be either.
std::string operandBranches(const Command& command) {
  std::string text;
  std::string files;
  std::istringstream operands(command.operands);
  std::string word;
  for (int place = 1; operands >> word; ++place) {
    const bool repeats = word.find("...") != std::string::npos;
    const bool isChoice = word.find('|') != std::string::npos;
    word.erase(std::remove_if(word.begin(), word.end(), isMark), word.end());
    std::replace(word.begin(), word.end(), '|', ' ');
    const bool isLast = (operands >> std::ws).eof();
    const bool isEach = isLast && (repeats || !files.empty());
    const std::string words =
        isEach ? pattern(command.name, "") + "*" : pattern(command.name, std::to_string(place));
    text += branch(words, isChoice ? files + word : kFiles);
    if (repeats) files = std::string(kFiles) + " ";
  }
  return text;
}

std::string function(const char* name, const char* comment, const std::string& branches) {
  return std::string(name) + "() {  # " + comment + "\n  case \"$1 $2\" in\n" + branches +
         "  esac\n}\n\n";
}

}  // namespace

std::string bashCompletion() {
  std::string options = branch("' '*", optionNames(globalOptions()));
  std::string arguments = argumentBranches("", globalOptions());
  std::string operands;
  std::vector<std::string> names;
  for (const Command& command : allCommands()) {
    const std::string name = command.name;
    names.push_back(name);
    options += branch(command.takesOptionsAnywhere ? pattern(name, "") + "*" : pattern(name, "0"),
                      optionNames(command.options));
    arguments += argumentBranches(name, command.options);
    operands += operandBranches(command);
  }
  operands = branch("'help 1'", joined(names, " ")) + operands;
  names.emplace_back("help");
  operands = branch("' 1'", joined(names, " ")) + operands;
  return "# bash completion for cusdesk, made by 'cusdesk export completion'\n\n" +
         function("_cusdesk_options", "COMMAND, how many operands so far: the options", options) +
         function("_cusdesk_argument", "COMMAND OPTION: what its argument can be", arguments) +
         function("_cusdesk_operand", "COMMAND NUMBER: what that operand can be", operands) +
         bash_completion_sh;
}

}  // namespace desk::commands
