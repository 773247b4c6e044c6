// What stands around a target: files to read, nothing on standard output, and a way to complain.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "desk/base/output.h"
#include "desk/host/settings.h"
#include "tests/support/temp_tree.h"

namespace fuzzing {

/// A controller and a USB disk of the process's own, below TMPDIR. Goes with the process.
inline const TempTree& files() {
  static const TempTree tree;
  return tree;
}

/// Points the host's services at `files()` and silences them. What the plug-in prints is dropped.
inline void setUpServices() {
  for (const char* directory : {"usb/json", "usb/xml", "root/mnt/data/CustomFileDir/JsonFile",
                                "root/mnt/data/CustomFileDir/XmlFile"}) {
    std::filesystem::create_directories(files().path(directory));
  }
  deskhost::settings().root = files().path("root");
  deskhost::settings().usb = files().path("usb");
  desk::setLogSink([](const std::string&) {});
  if (std::freopen("/dev/null", "w", stdout) == nullptr) std::abort();
}

/// A finding unless `holds`.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

}  // namespace fuzzing
