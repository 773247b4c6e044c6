// JSON values as messages name them.
#pragma once

#include <json/value.h>

#include <string>

#include "model/key_table.h"

namespace desk::check {

/// The member of that name, also when it is null; null when there is none, no name, or no object.
const Json::Value* member(const Json::Value& object, const char* name);

/// Whether the value is a text with a zero byte in it.
bool holdsZeroByte(const Json::Value& value);

/// "a text", "an integer", ...
const char* wordFor(model::KeyKind kind);

/// "the text \"7\"", "the number 3.5", "null", "an array", ...
std::string describe(const Json::Value& value);

}  // namespace desk::check
