// How the host makes the script module known to a script state.
#pragma once

struct lua_State;

// --- names fixed by the host ---------------------------------------------------------------------

/// Registers `cus_ParseModule` with a script state: in `package.loaded` and as a global. Called by
/// the host once per script state, found by its bare name. Returns 1 always; a null state is
/// ignored.
extern "C" int Custom_RegLuaLib(lua_State* L);

/// The same for a state given as an untyped pointer. Writes one line to standard output before and
/// one after, and leaves the Lua stack as it was.
void reg_cus_ParseModule(void* state);

/// The opener of the module: pushes a new table with the script functions.
int luaopen_cus_ParseModule(lua_State* L);
