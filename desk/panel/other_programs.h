// The other programs that convert and show pictures.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace desk::panel {

/// `svg` as PNG, made by the converter of the system. Throws Error when there is none, or when it
/// fails.
/// @param dotsPerInch for sizes that are given in millimetres
std::string pngOf(const std::string& svg, int dotsPerInch = 96);

/// Starts the program that the search path finds, without a shell, with `input` as its standard
/// input (-1: nothing to read) and `output` as its standard output (-1: this program's standard
/// error, as its own standard error).
/// @return its process, for the caller to wait for; -1 when there is no such program
pid_t startProcess(std::vector<std::string> words, int input, int output = -1);

}  // namespace desk::panel
