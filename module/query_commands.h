// The script commands that answer from the current job. Each returns one Lua table.
#pragma once

struct lua_State;

/// get_work(barcode): the works of a piece, or of all pieces for "".
int getWorkCommand(lua_State* L);

/// get_cut(barNumber): the cuts of a bar, or of all bars for "".
int getCutCommand(lua_State* L);

/// get_hole(): the distinct works of a JSON job.
int getHoleCommand(lua_State* L);

/// get_print(): one label per piece.
int getPrintCommand(lua_State* L);

/// get_Dimensions(barcode): the dimensions of a piece, once per work.
int getDimensionsCommand(lua_State* L);
