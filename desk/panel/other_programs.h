// Pictures as files, and the other programs that convert and show them.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace desk::panel {

/// Writes `svg` to `file`, "-" for standard output. Throws Error when it cannot be written whole.
void writeSvg(const std::string& svg, const std::string& file);

/// Writes `svg` to the PNG `file`, with the converter of the system. Throws Error when there is no
/// converter, or when it fails.
/// @param dotsPerInch for sizes that are given in millimetres
void writePng(const std::string& svg, const std::string& file, int dotsPerInch = 96);

/// Starts the program that the search path finds, without a shell, with `input` as its standard
/// input (-1: nothing to read). Its standard output and error are this program's standard error.
/// @return its process, for the caller to wait for; -1 when there is no such program
pid_t startProcess(std::vector<std::string> words, int input);

}  // namespace desk::panel
