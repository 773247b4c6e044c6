// The script commands that load a cutting job. Each returns {errorCode, info}.
#pragma once

struct lua_State;

/// What a loading command tells the script about a reader's code, for a JSON or an XML job.
const char* loadMessage(int code, bool isXml);

/// getjson_uDisk(name): loads a file of the USB disk.
int getjsonUDiskCommand(lua_State* L);

/// getjson_Flash(name): loads a file of the controller's flash.
int getjsonFlashCommand(lua_State* L);

/// getjson_url(url, name): downloads a job of the type loaded last, then loads it.
int getjsonUrlCommand(lua_State* L);
