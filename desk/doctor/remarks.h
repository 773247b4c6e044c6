// The parts of an examination, and the words that they share.
#pragma once

#include <string>
#include <vector>

#include "desk/doctor/examination.h"

namespace desk::doctor {

/// Whether the standard runtime is there and new enough.
std::vector<Remark> examineRuntime(const ElfFile& plugin, const Sysroot* target);

/// Whether the host offers what the plug-in leaves open, and has the libraries it was compiled for.
std::vector<Remark> examineHost(const ElfFile& plugin, const Sysroot* host);

/// Whether `plugin` asks for no more and offers no less than `earlier`.
std::vector<Remark> compare(const ElfFile& plugin, const ElfFile& earlier);

/// "a, b and c"; of a long list the beginning, and how many more there are.
std::string listed(const std::vector<std::string>& names);

/// One remark for each of the problems, or else that all is fine.
std::vector<Remark> judged(const std::string& subject, Weight weight,
                           const std::vector<std::string>& problems, const std::string& otherwise);

/// "32-bit ARM with hardware floating point (armhf), ARMv7-A, Thumb-2, VFPv3-D16"
std::string machineWords(const ElfFile& file);

/// The newest version that the file asks for, of each family: "GLIBC_2.17".
std::vector<std::string> newestNeeded(const ElfFile& file);
/// Whether `version` is newer than `other` of the same family, or no family's at all.
bool isNewer(const std::string& version, const std::string& other);

}  // namespace desk::doctor
