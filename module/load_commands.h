// The script commands that load a cutting job. Each returns {errorCode, info}.
#pragma once

#include "model/job_format.h"

struct lua_State;

/// What a loading command tells the script about the code of a format's reader.
const char* loadMessage(int code, model::JobFormat format);

/// getjson_uDisk(name): loads a file of the USB disk.
int getjsonUDiskCommand(lua_State* L);

/// getjson_Flash(name): loads a file of the controller's flash.
int getjsonFlashCommand(lua_State* L);

/// getjson_url(url, name): downloads a job of the type loaded last, then loads it.
int getjsonUrlCommand(lua_State* L);
