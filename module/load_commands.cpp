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

using model::JobFormat;

// --- texts fixed by the scripts ------------------------------------------------------------------

struct LoadMessage {
  int code;
  const char* text;  ///< null: each reader has words of its own
};

constexpr LoadMessage kLoadMessages[] = {
    {0, "文件解析成功"},       {-2, nullptr},
    {-3, "data数据解析失败"},  {-4, "bar数据解析失败"},
    {-5, "piece数据解析失败"}, {-6, "work数据解析失败"},
};
constexpr char kUnknownError[] = "未知错误";

// -------------------------------------------------------------------------------------------------

const char* messageOf(int code, const JobReader& reader) {
  for (const LoadMessage& message : kLoadMessages) {
    if (message.code == code) return message.text == nullptr ? reader.notObtained : message.text;
  }
  return kUnknownError;
}

/// The format that a name's ending tells. Throws std::out_of_range ("basic_string::substr") for a
/// name that is shorter than the first ending.
JobFormat formatOf(const std::string& name) {
  for (const model::JobFormatRow& row : model::kJobFormats) {
    if (name.substr(name.size() - row.ending.size()) != row.ending) continue;
    std::cout << "The string ends with " << row.ending << std::endl;
    return row.format;
  }
  // kept: any other name is tried as a JSON job
  std::cout << "Unknown file type" << std::endl;
  return JobFormat::Json;
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

int pushLoadResult(lua_State* L, int code, const JobReader& reader) {
  // before script code may run, and load something else
  const char* const message = messageOf(code, reader);
  lua_createtable(L, 0, 0);
  setNumber(L, "errorCode", code);
  setText(L, "info", message);
  return 1;
}

/// Makes the format of `name` the current one. A name that is too short leaves JSON behind.
JobFormat chooseFormat(const std::string& name) {
  nFileType = fileTypeOf(JobFormat::Json);
  const JobFormat format = formatOf(name);
  nFileType = fileTypeOf(format);
  return format;
}

/// Reads a job of that format and tells the script what became of it.
int loadFile(lua_State* L, JobFormat format, const std::string& path) {
  const JobReader& reader = readerOf(format);
  running_queries::setAside(*reader.job);
  return pushLoadResult(L, reader.read(path), reader);
}

}  // namespace

const char* loadMessage(int code, JobFormat format) {
  return messageOf(code, readerOf(format));
}

int getjsonUDiskCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string name = argument;
  const JobFormat format = chooseFormat(name);
  std::string disk;
  CHmiMedia::getUdiskPath(disk);
  return loadFile(L, format, disk + model::rowOf(format).usbDirectory + name);
}

int getjsonFlashCommand(lua_State* L) {
  const char* argument = luaL_checklstring(L, 1, nullptr);
  const std::string name = argument;
  const JobFormat format = chooseFormat(name);
  return loadFile(L, format, model::rowOf(format).flashDirectory + name);
}

int getjsonUrlCommand(lua_State* L) {
  luaL_checklstring(L, 1, nullptr);
  const char* nameArgument = luaL_checklstring(L, 2, nullptr);
  // read again: while a number became a text, script code may have run
  const char* urlArgument = luaL_checklstring(L, 1, nullptr);
  const JobReader* const reader = currentReader();
  // kept: another file type answers with the topmost argument
  if (reader == nullptr) return 1;
  const std::string url = urlArgument;
  const std::string name = nameArgument;
  running_queries::setAside(*reader->job);
  const int code = reader->download(url, name);
  std::printf("rst = %d\n", code);
  return pushLoadResult(L, code, *reader);
}
