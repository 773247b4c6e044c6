// Reads Lua line by line, runs it, and shows what comes of it.
#pragma once

#include <lua.hpp>
#include <string>

#include "desk/repl/line_source.h"
#include "desk/repl/prompt_code.h"
#include "desk/script/script_engine.h"

namespace desk::repl {

enum class Chunk {
  Ready,        ///< a function lies on top of the stack
  Incomplete,   ///< more lines may make it one; nothing lies on the stack
  SyntaxError,  ///< the message lies on top of the stack
};

/// Compiles `text`: an expression, whose value the function returns; the same behind a "="; or
/// statements.
Chunk compile(lua_State* L, const std::string& text);

class Repl {
 public:
  enum class Mode {
    Prompt,  ///< goes on after errors, Ctrl-C raises one
    Silent,  ///< ends with the first error
  };

  /// What it is given must outlive it; `code` is of the engine's state.
  Repl(script::ScriptEngine& engine, const PromptCode& code, LineSource& lines, Mode mode);

  /// Goes on until the lines end. Returns whether there was no error that ended it.
  bool run();

 private:
  enum class Step { Done, Failed, End };

  Step step();
  Step readChunk(std::string& text);
  void report(const std::string& failure) const;
  void hint(const std::string& failure) const;
  bool evaluate();
  bool show(int count);
  std::string prompt(const char* global, const char* otherwise) const;

  script::ScriptEngine& engine_;
  const PromptCode& code_;
  LineSource& lines_;
  const Mode mode_;
  std::string chunk_;  ///< that runs, or ran last
};

}  // namespace desk::repl
