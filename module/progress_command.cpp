#include "module/progress_command.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <lua.hpp>
#include <string>

namespace {

const char* progressFile() {
  const char* chosen = std::getenv("CUS_CUTCURINDEX_FILE");
  return chosen != nullptr && *chosen != '\0' ? chosen : CUS_CUTCURINDEX_DEFAULT;
}

void saveProgress(const std::string& first, const std::string& second) {
  std::ofstream file(progressFile(), std::ios::out | std::ios::trunc);
  if (!file.is_open()) {
    std::cout << "无法打开文件！" << std::endl;
    return;
  }
  file << first << std::endl;
  file << second << std::endl;
  file.close();
  std::cout << "数据已写入文件！" << std::endl;
}

}  // namespace

int saveCutCurIndexCommand(lua_State* L) {
  const char* first = luaL_checklstring(L, 1, nullptr);
  const char* second = luaL_checklstring(L, 2, nullptr);
  saveProgress(first, second);
  return 1;
}
