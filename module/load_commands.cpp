#include "module/load_commands.h"

#include <cstdio>
#include <iostream>
#include <lua.hpp>

#include "host/media.h"
#include "module/readers.h"
#include "module/running_queries.h"

// Arguments are read before the first object with a destructor is alive: on a host whose Lua is
// built as C an argument error jumps over destructors.

namespace {

// --- texts fixed by the scripts ------------------------------------------------------------------

struct LoadMessage {
  int code;
  const char* json;
  const char* xml;
};

constexpr LoadMessage kLoadMessages[] = {
    {0, "文件解析成功", "文件解析成功"},
    {-2, "json文件获取失败", "xml文件获取失败"},
    {-3, "data数据解析失败", "data数据解析失败"},
    {-4, "bar数据解析失败", "bar数据解析失败"},
    {-5, "piece数据解析失败", "piece数据解析失败"},
    {-6, "work数据解析失败", "work数据解析失败"},
};
constexpr char kUnknownError[] = "未知错误";

// -------------------------------------------------------------------------------------------------

/// The file type that a name's extension tells. Throws std::out_of_range ("basic_string::substr")
/// for a name of fewer than five bytes.
int fileTypeOf(const std::string& name) {
  if (name.substr(name.size() - 5) == ".json") {
    std::cout << "The string ends with .json" << std::endl;
    return kJsonJob;
  }
  if (name.substr(name.size() - 4) == ".xml") {
    std::cout << "The string ends with .xml" << std::endl;
    return kXmlJob;
  }
  // kept: any other name is tried as a JSON job
  std::cout << "Unknown file type" << std::endl;
  return kJsonJob;
}

void setNumber(lua_State* L, const char* key, int value) {
  lua_pushstring(L, key);
  lua_pushinteger(L, value);
  lua_settable(L, -3);
}

void setText(lua_State* L, const char* key, const char* value) {
  lua_pushstring(L, key);
  lua_pushstring(L, value);
  lua_settable(L, -3);
}

int pushLoadResult(lua_State* L, int code) {
  // before script code may run, and load something else
  const char* const message = loadMessage(code, nFileType == kXmlJob);
  lua_createtable(L, 0, 0);
  setNumber(L, "errorCode", code);
  setText(L, "info", message);
  return 1;
}

/// To be called before the current reader reads a job.
void setCurrentJobAside() {
  running_queries::setAside(nFileType == kXmlJob ? xml.data : json.data);
}

/// Decides the file type of `name`, then reads it from the directory of that type.
int loadFile(const std::string& name, const std::string& jsonDirectory,
             const std::string& xmlDirectory) {
  setCurrentJobAside();
  return nFileType == kXmlJob ? xml.xmlAnalysis(xmlDirectory + name)
                              : json.jsonAnalysis(jsonDirectory + name);
}

/// Makes the name's type the current one. A name that is too short leaves JSON behind.
void chooseFileType(const std::string& name) {
  nFileType = kJsonJob;
  nFileType = fileTypeOf(name);
}

}  // namespace

const char* loadMessage(int code, bool isXml) {
  for (const LoadMessage& message : kLoadMessages) {
    if (message.code == code) return isXml ? message.xml : message.json;
  }
  return kUnknownError;
}

int getjsonUDiskCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string name = argument;
  chooseFileType(name);
  std::string disk;
  CHmiMedia::getUdiskPath(disk);
  return pushLoadResult(L, loadFile(name, disk + "json/", disk + "xml/"));
}

int getjsonFlashCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string name = argument;
  chooseFileType(name);
  return pushLoadResult(L, loadFile(name, kFlashJsonDirectory, kFlashXmlDirectory));
}

int getjsonUrlCommand(lua_State* L) {
  luaL_checklstring(L, 1, nullptr);
  const char* nameArgument = luaL_checklstring(L, 2, nullptr);
  // read again: while a number became a text, script code may have run
  const char* urlArgument = luaL_checklstring(L, 1, nullptr);
  // kept: another file type answers with the topmost argument
  if (currentJob() == nullptr) return 1;
  const std::string url = urlArgument;
  const std::string name = nameArgument;
  setCurrentJobAside();
  const int code = nFileType == kXmlJob ? xml.getXml(url, name) : json.getJson(url, name);
  std::printf("rst = %d\n", code);
  return pushLoadResult(L, code);
}
