// help, exit and quit at the prompt.
#pragma once

#include <lua.hpp>
#include <string>
#include <utility>
#include <vector>

namespace desk::repl {

/// Sets the globals `help`, `exit` and `quit`. Each says what it is for when its name alone is
/// typed. help(f) writes the text of a function of the module, help() the overview.
/// @param module name of the global that holds the script module
/// @param texts of its functions by their names
void addHelp(lua_State* L, const char* module,
             const std::vector<std::pair<std::string, std::string>>& texts,
             const std::string& overview);

}  // namespace desk::repl
