#include "desk/base/text.h"
#include "desk/commands/bash_completion.sh.h"
#include "desk/commands/commands.h"

namespace desk::commands {

namespace {

// What can stand in a place: words with blanks between, and these. "@.json" is a file that ends so.
constexpr char kFiles[] = "@file";
constexpr char kFolders[] = "@dir";
constexpr char kAnything[] = "@any";

/// How the files end that an operand or an option wants, by its name.
struct Endings {
  const char* name;
  const char* kind;
};
constexpr Endings kEndings[] = {
    {"FILE", "@.json @.xml"}, {"OLD", "@.json @.xml"}, {"NEW", "@.json @.xml"},
    {"job", "@.json @.xml"},  {"SCRIPT", "@.lua"},     {"script", "@.lua"},
    {"PLUGIN", "@.so"},       {"plugin", "@.so"},      {"output", "@.svg @.png"},
    {"svg", "@.svg"},         {"png", "@.png"},
};

std::string filesFor(const std::string& name) {
  for (const Endings& endings : kEndings) {
    if (endings.name == name) return endings.kind;
  }
  return kFiles;
}

/// What the argument of an option can be, from its name in the help.
std::string argumentOf(const Option& option) {
  if (!option.values.empty()) return joined(option.values, " ");
  const std::string name = option.argument;
  if (name.find("DIR") != std::string::npos) return kFolders;
  for (const char* part : {"FILE", "PATH", "OUT"}) {
    if (name.find(part) != std::string::npos) return filesFor(option.name);
  }
  return kAnything;
}

/// The words that a branch stands for: a command, "*" for any, and what comes behind it.
std::string pattern(const std::string& command, const std::string& behind) {
  const std::string behindIt = "' " + behind + "'";
  return command == "*" ? "*" + behindIt : "'" + command + behindIt.substr(1);
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
      if (option.levels.empty()) continue;
      text += branch(pattern(command, word + "="), joined(option.levels, " "));
    }
  }
  return text;
}

/// The branches for a command's operands. In "FILE... [bars|works]" each word behind the first can
/// be either.
std::string operandBranches(const Command& command) {
  std::string text;
  std::string files;
  const std::vector<Operand> operands = operandsOf(command);
  for (std::size_t i = 0; i < operands.size(); ++i) {
    const Operand& operand = operands[i];
    const bool isLast = i + 1 == operands.size();
    const bool isEach = isLast && (operand.repeats || !files.empty());
    const std::string words =
        isEach ? pattern(command.name, "") + "*" : pattern(command.name, std::to_string(i + 1));
    text += branch(words, operand.values.empty() ? filesFor(operand.name)
                                                 : files + joined(operand.values, " "));
    if (operand.repeats) files = filesFor(operand.name) + " ";
  }
  return text;
}

std::string function(const char* name, const char* comment, const std::string& branches) {
  return std::string(name) + "() {  # " + comment + "\n  case \"$1 $2\" in\n" + branches +
         "  esac\n}\n\n";
}

}  // namespace

std::string bashCompletion() {
  const std::string everywhere = optionNames(globalOptions());
  std::string options = branch("' '*", everywhere);
  std::string arguments = argumentBranches("*", globalOptions());
  std::string operands;
  std::vector<std::string> names;
  for (const Command& command : allCommands()) {
    const std::string name = command.name;
    names.push_back(name);
    options += branch(command.leavesTheRest ? pattern(name, "0") : pattern(name, "") + "*",
                      optionNames(command.options) + " " + everywhere);
    arguments += argumentBranches(name, command.options);
    operands += operandBranches(command);
  }
  operands = branch("'help 1'", joined(names, " ")) + operands;
  names.emplace_back("help");
  operands = branch("' 1'", joined(names, " ")) + operands;
  return "# completion for cusdesk in bash and zsh, made by 'cusdesk export completion'\n\n" +
         function("_cusdesk_options", "COMMAND, how many operands so far: the options", options) +
         function("_cusdesk_argument",
                  "COMMAND OPTION[=]: what its argument can be, behind a NAME=", arguments) +
         function("_cusdesk_operand", "COMMAND NUMBER: what that operand can be", operands) +
         bash_completion_sh;
}

std::string fishCompletion() {
  return "# completion for cusdesk in fish, made by 'cusdesk export fish'; bash does the work\n\n"
         "function _cusdesk\n"
         "  bash -c 'eval \"$(cusdesk export completion)\"; COMP_WORDS=(\"$@\"); "
         "COMP_CWORD=$(($# - 1)); _cusdesk; printf \"%s\\n\" \"${COMPREPLY[@]}\"' bash "
         "(commandline -opc) (commandline -ct)\n"
         "end\n"
         "complete -c cusdesk -f -a '(_cusdesk)'\n";
}

}  // namespace desk::commands
