#include "desk/repl/repl.h"

#include <cstdio>
#include <optional>

#include "desk/base/terminal.h"
#include "desk/repl/interrupt.h"

namespace desk::repl {

namespace {

/// Writes all arguments: texts and the like with tabs between them, tables on lines of their own.
/// Upvalue 1 is the PromptCode.
int writeValues(lua_State* L) {
  const auto& code = *static_cast<const PromptCode*>(lua_touserdata(L, lua_upvalueindex(1)));
  Limits limits;
  const Terminal terminal = terminalOf(stdout);
  limits.rawTexts = !terminal.isTerminal;
  if (terminal.isTerminal) limits.columns = static_cast<int>(terminal.columns);
  std::string all;
  const int count = lua_gettop(L);
  for (int i = 1; i <= count; ++i) {
    const std::string text = code.valueText(i, limits);
    const bool apart = text.find('\n') != std::string::npos || all.find('\n') != std::string::npos;
    all += (i == 1 ? "" : apart ? "\n" : "\t") + text;
  }
  std::fwrite(all.data(), 1, all.size(), stdout);
  std::fputs("\n", stdout);
  return 0;
}

}  // namespace

Repl::Repl(script::ScriptEngine& engine, const PromptCode& code, LineSource& lines, Mode mode)
    : engine_(engine), code_(code), lines_(lines), mode_(mode) {
  engine_.reportTo([this](const std::string& failure) { report(failure); });
}

bool Repl::run() {
  for (;;) {
    const Step done = step();
    std::fflush(stdout);
    lua_settop(engine_.state(), 0);
    if (done == Step::End) return true;
    if (done == Step::Failed && mode_ == Mode::Silent) return false;
  }
}

Repl::Step Repl::step() {
  chunk_.clear();
  const Step chunk = readChunk(chunk_);
  if (chunk != Step::Done || chunk_.empty()) return chunk;
  return evaluate() ? Step::Done : Step::Failed;
}

/// Reads until the lines make a chunk, and leaves it on the stack. Without a text there is none.
Repl::Step Repl::readChunk(std::string& text) {
  lua_State* L = engine_.state();
  Reading reading = lines_.read(prompt("_PROMPT", "> "), text);
  if (reading == Reading::Eof) return Step::End;
  Chunk chunk = Chunk::Incomplete;
  while (reading == Reading::Line) {
    chunk = compile(L, text);
    if (chunk != Chunk::Incomplete) break;
    std::string line;
    reading = lines_.read(prompt("_PROMPT2", ">> "), line);
    if (reading == Reading::Line) text += "\n" + line;
  }
  if (reading == Reading::Interrupted) {
    text.clear();
    return Step::Done;
  }
  if (chunk == Chunk::Ready) return Step::Done;
  if (chunk == Chunk::Incomplete) luaL_loadbuffer(L, text.data(), text.size(), "=stdin");
  script::writeFailure(lua_tostring(L, -1));
  return Step::Failed;
}

bool Repl::evaluate() {
  lua_State* L = engine_.state();
  std::optional<ScriptInterrupt> interrupt;
  if (mode_ == Mode::Prompt) interrupt.emplace(L);
  if (!engine_.call(0)) return false;
  const bool isNil = lua_gettop(L) == 1 && lua_isnil(L, 1);
  if (!show(lua_gettop(L))) return false;
  if (isNil) hint("");
  return true;
}

void Repl::report(const std::string& failure) const {
  script::writeFailure(failure);
  hint(failure);
}

/// Names what may have been meant by a name without a value.
void Repl::hint(const std::string& failure) const {
  const std::string meant = code_.meant(chunk_, failure);
  if (meant.empty()) return;
  std::fflush(stdout);
  std::fprintf(stderr, "cusdesk: did you mean '%s'?\n", meant.c_str());
}

bool Repl::show(int count) {
  if (count == 0) return true;
  lua_State* L = engine_.state();
  luaL_checkstack(L, 2, "too many results");
  lua_pushlightuserdata(L, const_cast<PromptCode*>(&code_));
  lua_pushcclosure(L, writeValues, 1);
  lua_insert(L, 1);
  return engine_.call(count);
}

std::string Repl::prompt(const char* global, const char* otherwise) const {
  lua_State* L = engine_.state();
  lua_pushglobaltable(L);
  lua_pushstring(L, global);
  lua_rawget(L, -2);  // scripts may guard their globals with a metatable that raises
  const char* chosen = lua_tostring(L, -1);
  std::string text = chosen == nullptr ? otherwise : chosen;
  lua_pop(L, 2);
  return text;
}

}  // namespace desk::repl
