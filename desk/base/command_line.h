// The command line, driven by tables: what cusdesk and each of its commands accept.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// One long option.
struct Option {
  const char* name;                      ///< without the dashes
  const char* argument;                  ///< what the help calls its argument; null: it takes none
  const char* help;                      ///< one line
  char letter = '\0';                    ///< a short spelling, if it has one
  std::vector<std::string> values = {};  ///< all its argument may be, where that is a few names
  std::vector<std::string> levels = {};  ///< what may stand behind values that end with "="
  bool repeats = false;                  ///< whether it may be given again
};

/// What a command line says: options and the operands among them.
struct Arguments {
  /// By name, all that was given in its order; an option without argument is "".
  std::map<std::string, std::vector<std::string>> options;
  std::vector<std::string> operands;

  bool has(const std::string& name) const { return options.count(name) != 0; }

  /// What was given last.
  std::string value(const std::string& name, const std::string& otherwise = "") const;

  /// All that was given, for an option that may be given again.
  std::vector<std::string> values(const std::string& name) const;

  /// Adds options that stand behind these.
  void addOptions(const Arguments& behind);
};

/// One command: a row of the table that help, dispatch, completion and man page come from.
struct Command {
  const char* name;
  const char* operands;  ///< as the help shows them: "FILE...", "SCRIPT [ARG...]", "FILE one|other"
  const char* help;      ///< one line
  const char* examples;  ///< whole lines, each a command one can type
  std::vector<Option> options;
  int (*run)(const Arguments&);  ///< with the program's options; returns the exit code
  /// Whether the first operand ends the options: what stands behind it is for somebody else.
  bool leavesTheRest = false;
};

/// One operand of a command.
struct Operand {
  std::string name;                 ///< "FILE"; of a choice all its words, "one|other"
  std::vector<std::string> values;  ///< the words of a choice
  bool isOptional = false;
  bool repeats = false;
};

/// What `command` takes, from its row of the table.
std::vector<Operand> operandsOf(const Command& command);

/// Throws Error when operands are missing, too many, or none of the words of a choice, and when
/// standard input is to be two of them. A command that takes none in its table answers for them
/// itself; behind one that repeats nothing else is judged.
void checkOperands(const Command& command, const std::vector<std::string>& operands);

/// Throws Error for an option of the command's own, with an argument, that is given again although
/// that would hide the first. Of the program's options the last one counts.
void checkOptions(const Command& command, const Arguments& arguments);

/// Splits `words` into options and operands. Options end at the first operand or at "--". Throws
/// Error for an unknown option, with the nearest known one, and for a missing or surplus argument.
Arguments parse(const std::vector<std::string>& words, const std::vector<Option>& options);

/// The same with options and operands in any order; behind "--" there are operands only.
Arguments parseAnywhere(const std::vector<std::string>& words, const std::vector<Option>& options);

/// The candidate that `word` most likely stands for, empty when none is near.
std::string nearest(std::string_view word, const std::vector<std::string>& candidates);

/// The lines of a help text that tell the options.
std::string optionsHelp(const std::vector<Option>& options);

}  // namespace desk
