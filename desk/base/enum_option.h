// Options that name one of a few things.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "desk/base/command_line.h"
#include "desk/base/errors.h"
#include "desk/base/text.h"

namespace desk {

/// The names of all rows, for the help and for completion.
template <class Row, std::size_t count>
std::vector<std::string> namesOf(const Row (&table)[count]) {
  std::vector<std::string> names;
  for (const Row& row : table) names.emplace_back(row.name);
  return names;
}

/// The row of `table` that is called `wanted`. Throws Error with all names otherwise.
/// @param what what the names are for: "check: --format"
template <class Row, std::size_t count>
const Row& choice(const std::string& wanted, const std::string& what, const Row (&table)[count]) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const Row& row) { return row.name == wanted; });
  if (found != std::end(table)) return *found;
  const std::string near = nearest(wanted, namesOf(table));
  throw Error(kExitUsage, what + " is one of " + joined(namesOf(table), ", ") + ", not '" + wanted +
                              "'" + (near.empty() ? "" : "; did you mean '" + near + "'?"));
}

}  // namespace desk
