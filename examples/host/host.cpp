// A panel runtime in about a hundred lines: loads the plug-in, runs a script, shows a table. What
// the plug-in expects of its host is in services.cpp.
//
//   c++ -std=c++11 host.cpp services.cpp -o host -rdynamic -I ARCHIVE/include
//       $(pkg-config --cflags --libs jsoncpp tinyxml2 lua5.3-c++) -ldl
//   ./host ARCHIVE/libCustom_LuaParseModule.so ROOT [SCRIPT]
//
// ARCHIVE is the unpacked archive, ROOT a folder that stands for the controller's file system,
// SCRIPT a Lua file that returns the rows to show.
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <lua.hpp>

#include "host/plugin.h"
#include "part/table_part.h"  // for nOrder

extern std::string root;

using Texts = std::vector<std::vector<std::string>>;

static const char kScript[] =
    "local job = require 'cus_ParseModule'\n"
    "print('loaded', job.getjson_uDisk('recut.json').errorCode)\n"
    "local rows = {}\n"
    "for i, cut in ipairs(job.get_cut('')) do\n"
    "  rows[i] = {cut.BarNumber, cut.CutLength, cut.SxB, cut.DxB}\n"
    "end\n"
    "return rows\n";

/// Runs the script and answers with the rows that it returns.
static Texts runScript(lua_State* L, const char* file) {
  Texts table;
  if (file == nullptr ? luaL_dostring(L, kScript) : luaL_dofile(L, file)) {
    std::printf("%s\n", luaL_tolstring(L, -1, nullptr));
  }
  for (int row = 1; lua_istable(L, -1) && lua_rawgeti(L, -1, row) == LUA_TTABLE; ++row) {
    table.emplace_back();
    for (int cell = 1; lua_rawgeti(L, -1, cell) != LUA_TNIL; ++cell, lua_pop(L, 1)) {
      table.back().push_back(lua_tostring(L, -1));
    }
    lua_pop(L, 2);  // nil, row
  }
  lua_settop(L, 0);
  return table;
}

/// Shows the page of `table` that the part is on.
static void show(void* plugin, void* part, Texts& table) {
  int first = 0;
  int last = 0;
  const auto total = static_cast<unsigned short>(table.size());
  if (cus_plugin::kUpdate.in(plugin)(part, total, first, last) == 0) return;
  cus_plugin::Rows rows;
  for (int row = first; row <= last; ++row) rows.push_back(&table.at(std::size_t(row) - 1));
  cus_plugin::kSetBodyText.in(plugin)(part, rows);
  while (cus_plugin::kRefresh.in(plugin)(part) == 0) usleep(10000);
}

int main(int argc, char** argv) {
  if (argc < 3 || argc > 4) return 2;
  root = argv[2];
  void* const plugin = dlopen(argv[1], RTLD_NOW);
  if (plugin == nullptr) return std::puts(dlerror()), 3;

  lua_State* const L = luaL_newstate();
  luaL_openlibs(L);
  cus_plugin::kRegLuaLib.in(plugin)(L);
  Texts table;
  try {
    table = runScript(L, argv[3]);  // null when there are no more arguments
  } catch (const std::exception& error) {
    std::printf("%s\n", error.what());  // a Lua built as C lets the plug-in's exceptions pass
  }

  tagPARTCALLBACKS callbacks;
  cus_plugin::kSetFunPoint.in(plugin)(&callbacks);
  void* const part = callbacks.create();
  tagPARTINFO place = {{0, 0, 400, 120}};
  callbacks.init(part, &place);
  static_cast<CLuaParseModulePart*>(part)->nOrder = 0;  // first row at the top
  cus_plugin::kSetCell.in(plugin)(part, 2, 4, "1:3:1:1");
  cus_plugin::kDrawHeadText.in(plugin)(part, {"Bar", "Length", "left", "right"});
  show(plugin, part, table);

  cus_plugin::kPageDown.in(plugin)(part);
  show(plugin, part, table);
  callbacks.click(part, 0, CLICKPART_CLICK, {10, 60}, nullptr);  // on the upper row
  int row = 0;
  cus_plugin::kGetIndex.in(plugin)(part, row);
  unsigned short page = 0;
  unsigned short pages = 0;
  cus_plugin::kGetPage.in(plugin)(part, page, pages);
  std::printf("page %d of %d, row %d is selected\n", page, pages, row);
  std::string picture;
  if (callbacks.plcRead(part, nullptr)) callbacks.fillPartShowAttr(part, picture, nullptr);
  std::printf("%s", picture.c_str());

  callbacks.destroy(part);
  callbacks = tagPARTCALLBACKS();  // before dlclose: it holds the plug-in's functions
  lua_close(L);
  return dlclose(plugin);
}
