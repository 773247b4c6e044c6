// Names on the controller, and the files on this PC that stand for them.
#pragma once

#include <string>

namespace deskhost {

/// Mount path of the USB disk as the services hand it out: absolute, with one trailing '/'. Without
/// a disk in the settings it is a path below which nothing exists; "/" alone counts as no disk.
std::string usbMount();

/// Finds the file for `name`, an absolute path on the controller.
///
/// A name below `usbMount()` is taken as it stands; every other one lies below the root directory.
/// The file itself need not exist, nor the directories above it, so the result serves for files
/// to be written too. Symbolic links are followed, and `file` is free of them.
///
/// Refused: names that are empty, relative, too long, not UTF-8, hold a zero byte or a ".."
/// component, end like a directory, or come to lie outside of the root directory or the disk.
/// ".." is refused even where it would stay inside: a job file has no business elsewhere.
///
/// Files that the settings present under just this name come first, and may lie anywhere.
/// @param file   set on success only; absolute, or as the settings name a file that they present
/// @param reason set on failure only, without the name
bool resolvePath(const std::string& name, std::string& file, std::string& reason);

/// Whether the settings present a file under this name. Such a file is not to be written: whoever
/// named it wants it read.
bool isPresented(const std::string& name);

}  // namespace deskhost
