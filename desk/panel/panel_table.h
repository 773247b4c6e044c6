// The Lua table `panel`, through which a script drives the table part. docs/panel.md is its manual.
#pragma once

#include <atomic>
#include <lua.hpp>
#include <string>

#include "desk/panel/console.h"
#include "desk/panel/table_part.h"

namespace desk::panel {

/// What a script is told about the panel it runs on.
struct PanelFacts {
  std::string script;   ///< the file
  std::string jobFile;  ///< to load before the script; empty: the script knows itself
  std::string job;      ///< what to give to getjson_Flash for it
  int width;            ///< of the part, in pixels
  int height;
};

/// What a running script works on. All it refers to outlives the Lua state.
struct ScriptContext {
  TablePart& part;
  Console& console;
  const std::atomic<bool>& stop;  ///< once set, running code ends with an error

  unsigned short columns = 0;  ///< of the grid
  unsigned short total = 0;    ///< rows that the script says there are
  bool refreshIsDue = false;   ///< the part has changed and did not grant a redraw yet
};

/// The context of a state, set by `installPanelTable`.
ScriptContext& contextOf(lua_State* L);

/// Makes the global `panel`.
void installPanelTable(lua_State* L, ScriptContext& context, const PanelFacts& facts);

/// Pushes the table, whatever the script has done to the global.
void pushPanelTable(lua_State* L);

/// What a page key does by itself, as a Lua function: turns the page "up" or "down" and shows it.
int turnPage(lua_State* L);

}  // namespace desk::panel
