// Lines that are typed at a terminal and can be edited there.
#pragma once

#include <memory>
#include <string>

#include "desk/repl/line_source.h"
#include "desk/repl/prompt_code.h"

namespace desk::repl {

/// An editor for one line at a time, with a history that outlives the program, and Tab. One per
/// process. A history that cannot be kept is no error: it ends with the program.
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
