// What each query command must answer: the rows of its maker, as text.
#pragma once

#include <string>
#include <vector>

namespace fuzzing {

/// A query command: its row keys, and the rows it must give for an argument, as `rowsAsText` shows
/// them. Throws what the readers throw.
struct Query {
  char step;  ///< how inputs name it
  const char* function;
  bool takesArgument;
  unsigned allowed;
  std::vector<std::string> keys;
  std::string (*expected)(const std::string& argument);
};

/// The five of them.
const std::vector<Query>& queries();

}  // namespace fuzzing
