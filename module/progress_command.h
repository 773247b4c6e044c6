// The script command that records how far a cut list has come.
#pragma once

struct lua_State;

/// save_cutCurIndex(first, second): writes both texts to the progress file, a line each, and
/// returns what is on top of the stack, which is the second one when there are two arguments.
///
/// The file is the one that the environment variable CUS_CUTCURINDEX_FILE names at the time of the
/// call, else the one set at build time. Directories are not created; a file that cannot be opened
/// is reported on standard output only.
int saveCutCurIndexCommand(lua_State* L);
