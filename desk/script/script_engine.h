// A Lua state with the plug-in's script module in it, as scripts find it on the panel.
#pragma once

#include <functional>
#include <lua.hpp>
#include <memory>
#include <string>
#include <vector>

#include "desk/script/plugin.h"

namespace desk::job {
struct PresentedJob;
}

namespace desk::script {

/// The name of the module, as scripts require it.
inline constexpr char kModule[] = "cus_ParseModule";

/// What becomes of a C++ exception that leaves a module function.
enum class ModuleErrors {
  Guarded,  ///< a Lua error with the function's name and the exception's text
  Raw,      ///< whatever Lua itself makes of it, as on the panel
};

/// What becomes of the lines that the plug-in writes to standard output.
enum class PluginLines {
  Kept,  ///< they stand among the script's own, as on the panel
  Dropped,
  StandardError,
};

/// What becomes of a failure that nobody else reports: it goes to standard error.
void writeFailure(const std::string& failure);

/// One script state: Lua with its standard libraries and the module registered.
class ScriptEngine {
 public:
  /// The plug-in must outlive the engine. Throws Error when it cannot be registered.
  ScriptEngine(const Plugin& plugin, ModuleErrors errors, PluginLines lines = PluginLines::Kept);

  /// Hands failures, message and traceback, to `report` and no longer to standard error.
  void reportTo(std::function<void(const std::string& failure)> report);

  /// Runs a script file ("-": standard input) with its arguments, as the stock interpreter does.
  /// Returns 0, or 1 after reporting message and traceback. Throws Error when the
  /// file cannot be read. A script that calls os.exit ends the program.
  int run(const std::string& script, const std::vector<std::string>& arguments);

  /// Sets the global `arg`: the script at 0, its arguments from 1 on.
  void setArguments(const std::string& script, const std::vector<std::string>& arguments);

  /// Calls the function below its `arguments` on top of the stack, for any number of results.
  /// Returns false after reporting message and traceback; the stack is empty then.
  bool call(int arguments);

  lua_State* state() const { return state_.get(); }

 private:
  struct Close {
    void operator()(lua_State* L) const { lua_close(L); }
  };
  int reportFailure(int status);

  std::unique_ptr<lua_State, Close> state_;
  std::function<void(const std::string&)> report_;
};

/// Loads `file`, which may lie anywhere on this PC or be "-", with getjson_Flash, before a script
/// begins. Throws Error when it cannot be read or does not load. Callers include
/// desk/job/job_file.h.
job::PresentedJob loadJob(ScriptEngine& engine, const std::string& file);

}  // namespace desk::script
