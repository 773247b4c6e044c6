// What the answers to questions look like, whoever gives them: the plug-in or the desk itself.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "desk/base/errors.h"
#include "desk/base/table.h"
#include "desk/show/question.h"

namespace desk::show {

/// What a script command raises.
class Raised : public Error {
 public:
  /// @param command as scripts call it: "get_cut"
  Raised(const std::string& command, const std::string& message)
      : Error(kExitFindings, "show: " + message), command_(command) {}
  Raised(const std::string& command, const std::logic_error& error)
      : Raised(command, command + ": " + error.what()) {}

  const std::string& command() const { return command_; }

 private:
  std::string command_;
};

/// The script command that answers; that of the cuts for bars, which no command lists.
const char* commandFor(Subject subject);

/// A key of the rows of an answer.
struct Column {
  std::string name;
  std::string about;  ///< what it holds, in a few words
};

std::vector<Column> columnsOf(const Question& question);
std::vector<std::string> keysOf(const Question& question);

/// How many pieces the bar of a cut holds.
std::size_t piecesOn(const std::vector<Cell>& cut);

/// The row of a bar, put together from the first cut and the first label on it.
std::vector<Cell> barRow(const std::vector<Cell>& cut, const std::vector<Cell>& label);

/// The bars. No command lists them: theirs are put together from all cuts and labels, so a bar
/// without pieces is not among them, as for a script.
TextTable barsOf(const TextTable& cuts, const TextTable& labels);

/// What check says of the value in `file` that makes a command raise: "; FILE:LINE:COLUMN: ...".
/// Empty when it says nothing.
std::string causeOf(const Raised& raised, const std::string& file);

/// The same of the content of a file.
std::string causeOf(const Raised& raised, const std::string& file, const std::string& bytes);

}  // namespace desk::show
