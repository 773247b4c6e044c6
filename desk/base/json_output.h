// JSON as cusdesk writes it.
#pragma once

#include <json/value.h>

#include <string>

namespace desk {

/// The document with a line end: indented, characters as they are, numbers as short as they read
/// back. Texts must be UTF-8.
std::string jsonDocument(const Json::Value& root);

}  // namespace desk
