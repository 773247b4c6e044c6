// The doctor: what is to be said of a plug-in before it goes to a controller.
#pragma once

#include <string>
#include <vector>

#include "desk/doctor/elf_file.h"
#include "desk/doctor/sysroot.h"

namespace desk::doctor {

/// What a finding means for the plug-in.
enum class Weight {
  Fine,
  Flaw,   ///< it loads; something of it is not as it should be
  Open,   ///< the files at hand do not tell
  Fatal,  ///< it will not load, or not do its work
};

/// One thing that was looked at.
struct Remark {
  Weight weight;
  std::string subject;  ///< one or two words
  std::string text;     ///< a line for an integrator
};

/// What a plug-in is held against. Null: not given.
struct Surroundings {
  const Sysroot* target;   ///< the controller's libraries; else the oldest controllers count
  const Sysroot* host;     ///< the panel runtime's program and libraries; else the contract counts
  const ElfFile* earlier;  ///< the plug-in whose place it shall take
};

struct Diagnosis {
  std::string sentence;  ///< what settles the matter, about "it"
  std::vector<Remark> remarks;
  int problems;  ///< remarks that are not fine
};

/// What to look for in a plug-in with `readElf`, for `examine`: the names of the script functions.
std::vector<std::string> soughtTexts();

/// What is worth saying of `plugin`, good and bad. Of a file that is no plug-in, or is for another
/// machine, only that.
Diagnosis examine(const ElfFile& plugin, const Surroundings& around);

}  // namespace desk::doctor
