// Other programs, started without a shell.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace desk {

/// Starts the program that the search path finds, with `input` as its standard input (-1: nothing
/// to read). Standard output and error are this program's standard error.
/// @return its process, for the caller to wait for; -1 when there is no such program
pid_t startProcess(std::vector<std::string> words, int input);

}  // namespace desk
