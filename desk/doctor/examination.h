// The doctor: what is to be said of a plug-in before it goes to a controller.
#pragma once

#include <string>
#include <vector>

#include "desk/doctor/elf_file.h"
#include "desk/doctor/sysroot.h"

namespace desk::doctor {

/// One thing that was looked at.
struct Remark {
  bool problem;         ///< it will not load, or not do its work
  std::string subject;  ///< one or two words
  std::string text;     ///< a line for an integrator
};

/// What to look for in a plug-in with `readElf`, for `examine`: the names of the script functions.
std::vector<std::string> soughtTexts();

/// Everything worth saying of `plugin`, good and bad. `target`: the controller's libraries; null:
/// the oldest controllers. `host`: the panel runtime's program and libraries; null: what the
/// contract promises of it.
std::vector<Remark> examine(const ElfFile& plugin, const Sysroot* target, const Sysroot* host);

/// The part of `examine` that asks whether the standard runtime is there and new enough.
std::vector<Remark> examineRuntime(const ElfFile& plugin, const Sysroot* target);

/// "a, b and c"; of a long list the beginning, and how many more there are.
std::string listed(const std::vector<std::string>& names);

}  // namespace desk::doctor
