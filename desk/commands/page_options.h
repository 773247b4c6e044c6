// What the commands take that show a panel, on the page or as a picture.
#pragma once

#include <string>
#include <vector>

#include "desk/base/command_line.h"
#include "desk/panel/panel.h"

namespace desk::commands {

/// Throws Error for an option of a command that means something else.
[[noreturn]] void refuseOption(const std::string& command, const std::string& option,
                               const std::string& expected);

/// Reads two decimal numbers of up to `most` with `separator` between them, and nothing else.
bool readPair(const std::string& text, char separator, int most, int& first, int& second);

/// The number that an option gives, or `otherwise` without it. Throws Error for another text.
unsigned long long numberOf(const std::string& command, const Arguments& arguments,
                            const std::string& option, unsigned long long otherwise,
                            unsigned long long least, unsigned long long most);

constexpr int kLongestSide = 4096;  ///< of a panel, in pixels

/// --script, --fault, --size: what a panel is made of.
std::vector<Option> panelOptions();

/// --port, --no-open.
std::vector<Option> pageOptions();

/// The panel with these options and a job; "" for none. Applies the program's options. Throws Error
/// when one is wrong or something cannot be read.
panel::PanelSetup panelSetupOf(const std::string& command, const Arguments& arguments,
                               const std::string& job);

/// Shows jobs on the page, the first of them on the panel too, until the user ends that. Returns
/// the exit code.
/// @param view the one that the page opens at
int showPage(const std::string& command, const Arguments& arguments,
             const std::vector<std::string>& jobs, const std::string& view);

}  // namespace desk::commands
