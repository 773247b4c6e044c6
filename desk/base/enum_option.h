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
/// @param what  what the names are for: "check: --format"
/// @param shown the names as people type them, where that is more than a row's
template <class Row, std::size_t count>
const Row& choice(const std::string& wanted, const std::string& what, const Row (&table)[count],
                  const std::vector<std::string>& shown) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const Row& row) { return row.name == wanted; });
  if (found != std::end(table)) return *found;
  const std::string near = nearest(wanted, shown);
  throw Error(kExitUsage, what + " is one of " + joined(shown, ", ") + ", not '" + wanted + "'" +
                              (near.empty() ? "" : "; did you mean '" + near + "'?"));
}

template <class Row, std::size_t count>
const Row& choice(const std::string& wanted, const std::string& what, const Row (&table)[count]) {
  return choice(wanted, what, table, namesOf(table));
}

}  // namespace desk
