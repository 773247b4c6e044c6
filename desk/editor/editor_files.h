// What editors need to know of jobs and scripts, made from the readers' and the scripts' tables.
#pragma once

#include <string>

namespace desk::editor {

/// JSON Schema (draft-07) of a JSON job in the form that writers should keep to: first spellings
/// only, and every key whose absence would carry an old value over.
std::string jsonSchema();

/// XML Schema 1.0 of an XML job, in the same spirit: every element, in the order of the reader,
/// once, and with text.
std::string xmlSchema();

/// The script module for Lua language servers (LuaCATS annotations).
std::string luaStub();

/// The table `panel` for the same.
std::string panelStub();

/// The tables of the manual in Markdown: result codes, rows of scripts, keys of both formats. Each
/// stands below a comment with its name.
std::string manualTables();

/// A configuration that lets luacheck know the module's global table and `panel`.
std::string luacheckConfig();

}  // namespace desk::editor
