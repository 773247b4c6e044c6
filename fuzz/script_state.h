// One Lua state with the module in it, and calls of its functions with arguments from an input.
#pragma once

#include <lua.hpp>
#include <string>
#include <vector>

namespace fuzzing {

/// The state of the process.
lua_State* scriptState();

/// Calls a function of the module. An argument "!" is nil, "?" a table, "#..." a number or 0; any
/// other one a text as it stands. Exceptions but `allowed` ones are findings.
/// @return what `read` makes of the function's one result; "error" and the message for a Lua error;
///         "throws" and the text for an exception. The Lua stack is checked to be level.
std::string callModule(const std::string& function, const std::vector<std::string>& arguments,
                       unsigned allowed, std::string (*read)(lua_State*));

/// The values of the rows of the table on top of the stack, as text.
std::string rowsAsText(lua_State* L);

/// The value on top of the stack as text.
std::string valueAsText(lua_State* L);

}  // namespace fuzzing
