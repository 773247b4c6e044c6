#include <cctype>
#include <string_view>

#include "desk/base/errors.h"
#include "desk/commands/commands.h"

namespace desk::commands {

namespace {

/// Text as man's macros take it: nothing in it is a request or an escape, dashes stay dashes.
std::string escaped(std::string_view text) {
  std::string result;
  bool isLineStart = true;
  for (const char c : text) {
    if (isLineStart && (c == '.' || c == '\'')) result += "\\&";
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '-':
        result += "\\-";
        break;
      case '\'':
        result += "\\(aq";
        break;
      default:
        result += c;
    }
    isLineStart = c == '\n';
  }
  return result;
}

std::string section(const char* name, const std::string& text) {
  return std::string(".SH ") + name + "\n" + text;
}

std::string bold(const std::string& text) {
  return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(const std::string& text) {
  return "\\fI" + escaped(text) + "\\fR";
}

/// One entry of a list: a term and what it means.
std::string entry(const std::string& term, const std::string& text) {
  return ".TP\n" + term + "\n" + escaped(text) + "\n";
}

std::string optionList(const std::vector<Option>& options) {
  std::string text;
  for (const Option& option : options) {
    std::string term;
    if (option.letter != '\0') term += bold(std::string{'-', option.letter}) + ", ";
    term += bold(std::string("--") + option.name);
    if (option.argument != nullptr) term += " " + italic(option.argument);
    text += entry(term, option.help);
  }
  return text;
}

/// A line of the help as a sentence.
std::string sentence(std::string text) {
  text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  return escaped(text) + ".\n";
}

std::string commandSection(const Command& command) {
  std::string usage =
      bold(std::string("cusdesk ") + command.name) + " [" + italic("OPTION") + "...]";
  if (*command.operands != '\0') usage += " " + italic(command.operands);
  return ".SS " + std::string(command.name) + "\n" + usage + "\n.PP\n" + sentence(command.help) +
         optionList(command.options) + ".PP\nExamples:\n.PP\n.EX\n" + escaped(command.examples) +
         ".EE\n";
}

std::string environment() {
  return entry(bold("CUS_CUTCURINDEX_FILE"),
               "The file that save_cutCurIndex writes. Without it the file lies below the root.") +
         entry(bold("CUSDESK_PROGRESS_AFTER"),
               "After how many milliseconds of work a terminal is told what goes on; 300 without "
               "it.") +
         entry(bold("NO_COLOR"), "When it is set, output to a terminal has no colours.");
}

std::string files() {
  return entry(italic("/mnt/data/CustomFileDir/JsonFile/"),
               "JSON jobs for getjson_Flash, below the root.") +
         entry(italic("/mnt/data/CustomFileDir/XmlFile/"),
               "XML jobs for getjson_Flash, below the root.") +
         entry(italic("json/, xml/"), "Jobs for getjson_uDisk, below the folder of --usb.");
}

}  // namespace

std::string manPage() {
  std::string list;
  for (const Command& command : allCommands()) list += commandSection(command);
  return ".\\\" Made by 'cusdesk export man'.\n"
         ".TH CUSDESK 1 \"\" \"cusdesk " CUSDESK_VERSION "\" \"User Commands\"\n" +
         section("NAME", "cusdesk \\- the panel of a profile cutting machine, on a PC\n") +
         section("SYNOPSIS",
                 bold("cusdesk") + " " + italic("COMMAND") + " [" + italic("ARGUMENT") + "...]\n") +
         section("DESCRIPTION",
                 "Stands in for the panel: loads the cutting-job plug-in, runs the scripts of the\n"
                 "machine with it, tells what its readers make of job files, draws them, and\n"
                 "shows them and its table in a browser.\n"
                 "The options of all commands stand before or behind the command.\n") +
         section("OPTIONS", optionList(globalOptions())) + section("COMMANDS", list) +
         section("EXIT STATUS", escaped(kExitCodesHelp) + "\n") +
         section("ENVIRONMENT", environment()) + section("FILES", files());
}

}  // namespace desk::commands
