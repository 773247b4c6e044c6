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
};

/// What a command line says: options and the operands behind them.
struct Arguments {
  /// By name, the arguments in the order given; an option without argument has "".
  std::map<std::string, std::vector<std::string>> options;
  std::vector<std::string> operands;

  bool has(const std::string& name) const { return options.count(name) != 0; }
  /// The argument given last.
  std::string value(const std::string& name, const std::string& otherwise = "") const;
  /// All arguments of an option that may be given again.
  std::vector<std::string> values(const std::string& name) const;
};

struct Invocation;

/// One command: a row of the table that help, dispatch, completion and man page come from.
struct Command {
  const char* name;
  const char* operands;  ///< as the help shows them
  const char* help;      ///< one line
  const char* examples;  ///< whole lines, each a command one can type
  std::vector<Option> options;
  int (*run)(const Invocation&);  ///< returns the exit code
  /// Whether options may stand behind operands. Not where the rest is for somebody else.
  bool takesOptionsAnywhere = false;
};

/// What a command gets to see.
struct Invocation {
  Arguments global;   ///< what stood before the command
  Arguments command;  ///< what stood behind it
};

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
