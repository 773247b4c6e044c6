// The forms in which rows are printed.
#pragma once

#include <string>

#include "desk/base/terminal.h"
#include "desk/show/table.h"

namespace desk::show {

/// Aligned columns under a heading. On a terminal the widest columns are cut until a row fits;
/// where too little would be left of them, each value has a line of its own.
/// @param where adds to each value the line that it was read from, with a "*" for a carried one
std::string tableText(const Table& table, bool where, const Terminal& terminal);

/// Comma-separated values (RFC 4180) with a heading. `where` adds two columns for each key.
std::string csvText(const Table& table, bool where);

/// An array of objects. `where` makes an object of each value.
std::string jsonText(const Table& table, bool where);

}  // namespace desk::show
