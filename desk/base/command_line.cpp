#include "desk/base/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <numeric>
#include <sstream>
#include <utility>

#include "desk/base/errors.h"
#include "desk/base/text.h"

namespace desk {

namespace {

/// How many single-character edits lie between two words.
std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

[[noreturn]] void refuseOption(const std::string& word, int reason,
                               const std::vector<Option>& options) {
  if (reason == ':') throw Error(kExitUsage, "option '" + word + "' needs an argument");
  std::vector<std::string> names;
  for (const Option& option : options) {
    names.push_back(std::string("--") + option.name);
    if (word.rfind(names.back() + "=", 0) == 0) {
      throw Error(kExitUsage, "option '" + names.back() + "' takes no argument");
    }
  }
  const std::string near = nearest(word, names);
  throw Error(kExitUsage, "unknown option '" + word + "'" +
                              (near.empty() ? "" : "; did you mean '" + near + "'?"));
}

/// The tables that the C library's parser wants. `+` stops it at the first operand, `:` keeps it
/// from reporting errors itself.
std::pair<std::vector<option>, std::string> parserTables(const std::vector<Option>& options) {
  std::vector<option> longOptions;
  std::string letters = "+:";
  for (const Option& row : options) {
    const int argument = row.argument == nullptr ? no_argument : required_argument;
    longOptions.push_back({row.name, argument, nullptr, 0});
    if (row.letter == '\0') continue;
    letters += row.letter;
    if (row.argument != nullptr) letters += ':';
  }
  longOptions.push_back({nullptr, 0, nullptr, 0});
  return {longOptions, letters};
}

}  // namespace

std::string Arguments::value(const std::string& name, const std::string& otherwise) const {
  const auto found = options.find(name);
  return found == options.end() ? otherwise : found->second.back();
}

std::vector<std::string> Arguments::values(const std::string& name) const {
  const auto found = options.find(name);
  return found == options.end() ? std::vector<std::string>() : found->second;
}

void Arguments::addOptions(const Arguments& behind) {
  for (const auto& [name, values] : behind.options) {
    options[name].insert(options[name].end(), values.begin(), values.end());
  }
}

Arguments parse(const std::vector<std::string>& words, const std::vector<Option>& options) {
  std::vector<std::string> copies = words;
  copies.insert(copies.begin(), "cusdesk");
  std::vector<char*> argv;
  argv.reserve(copies.size() + 1);
  for (std::string& word : copies) argv.push_back(word.data());
  argv.push_back(nullptr);

  const auto [longOptions, letters] = parserTables(options);
  Arguments parsed;
  optind = 0;
  for (;;) {
    const std::size_t current = static_cast<std::size_t>(std::max(optind, 1));
    int index = 0;
    const int found = getopt_long(static_cast<int>(copies.size()), argv.data(), letters.c_str(),
                                  longOptions.data(), &index);
    if (found == -1) break;
    if (found == '?' || found == ':') {
      const bool isLetter = optopt != 0 && copies.at(current).rfind("--", 0) != 0;
      const std::string word =
          isLetter ? std::string{'-', static_cast<char>(optopt)} : copies.at(current);
      refuseOption(word, found, options);
    }
    const Option& row =
        found == 0 ? options.at(static_cast<std::size_t>(index))
                   : *std::find_if(options.begin(), options.end(),
                                   [&](const Option& option) { return option.letter == found; });
    parsed.options[row.name].emplace_back(optarg != nullptr ? optarg : "");
  }
  parsed.operands.assign(copies.begin() + optind, copies.end());
  return parsed;
}

Arguments parseAnywhere(const std::vector<std::string>& words, const std::vector<Option>& options) {
  Arguments all;
  std::vector<std::string> rest = words;
  for (;;) {
    const Arguments next = parse(rest, options);
    all.addOptions(next);
    const std::size_t read = rest.size() - next.operands.size();
    const bool isEnded = read > 0 && rest[read - 1] == "--";
    const std::size_t taken =
        isEnded ? next.operands.size() : std::min<std::size_t>(1, next.operands.size());
    const auto end = next.operands.begin() + static_cast<std::ptrdiff_t>(taken);
    all.operands.insert(all.operands.end(), next.operands.begin(), end);
    if (end == next.operands.end()) return all;
    rest.assign(end, next.operands.end());
  }
}

std::vector<Operand> operandsOf(const Command& command) {
  std::vector<Operand> operands;
  std::istringstream words(command.operands);
  std::string word;
  while (words >> word) {
    Operand& operand = operands.emplace_back();
    operand.isOptional = word.front() == '[';
    operand.repeats = word.find("...") != std::string::npos;
    const auto isMark = [](char c) { return c == '[' || c == ']' || c == '.'; };
    word.erase(std::remove_if(word.begin(), word.end(), isMark), word.end());
    operand.name = word;
    if (word.find('|') == std::string::npos) continue;
    std::istringstream choices(word);
    for (std::string choice; std::getline(choices, choice, '|');) operand.values.push_back(choice);
  }
  return operands;
}

void checkOperands(const Command& command, const std::vector<std::string>& operands) {
  const std::vector<Operand> known = operandsOf(command);
  const auto refuse = [&](const std::string& reason) {
    throw Error(kExitUsage, command.name + (": " + reason) + " Usage: cusdesk " + command.name +
                                " " + command.operands);
  };
  if (operands.size() < known.size() && !known[operands.size()].isOptional) {
    refuse("which " + known[operands.size()].name + "?");
  }
  const bool areFiles = !command.leavesTheRest;
  if (areFiles && std::count(operands.begin(), operands.end(), "-") > 1) {
    refuse("'-' is given twice, but standard input can be read once only.");
  }
  if (known.empty() ||
      std::any_of(known.begin(), known.end(), [](const Operand& one) { return one.repeats; })) {
    return;
  }
  if (operands.size() > known.size()) refuse("'" + operands[known.size()] + "' is one too many.");
  for (std::size_t i = 0; i < operands.size(); ++i) {
    const std::vector<std::string>& values = known[i].values;
    if (values.empty() || contains(values, operands[i])) continue;
    const std::string near = nearest(operands[i], values);
    refuse("what is '" + operands[i] + "'?" +
           (near.empty() ? "" : " Did you mean '" + near + "'?"));
  }
}

void checkOptions(const Command& command, const Arguments& arguments) {
  for (const Option& option : command.options) {
    if (option.argument == nullptr || option.repeats) continue;
    const std::vector<std::string> given = arguments.values(option.name);
    if (given.size() < 2) continue;
    throw Error(kExitUsage, std::string(command.name) + ": option '--" + option.name +
                                "' is given twice: '" + given[0] + "' and '" + given[1] + "'");
  }
}

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
  std::string best;
  std::size_t bestDistance = word.size() / 3 + 2;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = editDistance(word, candidate);
    if (distance >= bestDistance) continue;
    best = candidate;
    bestDistance = distance;
  }
  return best;
}

std::string optionsHelp(const std::vector<Option>& options) {
  constexpr std::size_t kHelpColumn = 22;
  std::string text;
  for (const Option& option : options) {
    std::string line = "  ";
    if (option.letter != '\0') line += std::string("-") + option.letter + ", ";
    line += std::string("--") + option.name;
    if (option.argument != nullptr) line += std::string(" ") + option.argument;
    line.resize(std::max(line.size() + 2, kHelpColumn), ' ');
    text += line + option.help + "\n";
  }
  return text;
}

}  // namespace desk
