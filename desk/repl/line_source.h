// Where the prompt's lines come from.
#pragma once

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

}  // namespace desk::repl
