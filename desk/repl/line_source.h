// Where the prompt's lines come from.
#pragma once

#include <memory>
#include <string>

namespace desk::repl {

enum class Reading {
  Line,
  Eof,          ///< no line is left, or Ctrl-D
  Interrupted,  ///< Ctrl-C: what was typed so far is to be forgotten
};

class LineSource {
 public:
  virtual ~LineSource() = default;

  /// Reads the next line, without its end.
  virtual Reading read(const std::string& prompt, std::string& line) = 0;
};

class PromptCode;

/// Lines that are typed at a terminal and can be edited there: an editor for one line at a time,
/// with a history that outlives the program, and Tab. One per process. A history that cannot be
/// kept is no error: it ends with the program.
class TerminalLines : public LineSource {
 public:
  /// @param code for Tab; must outlive the editor
  explicit TerminalLines(const PromptCode& code);
  ~TerminalLines() override;
  TerminalLines(const TerminalLines&) = delete;
  TerminalLines& operator=(const TerminalLines&) = delete;

  Reading read(const std::string& prompt, std::string& line) override;

 private:
  class Editor;
  std::unique_ptr<Editor> editor_;
};

}  // namespace desk::repl
