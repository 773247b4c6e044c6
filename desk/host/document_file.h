// Reading a job file whole.
#pragma once

#include <string>

namespace deskhost {

/// Reads the regular file `file` of this PC whole into `text`, at most `maxDocumentBytes` of the
/// settings. Never waits: anything but a regular file is refused once it is open, so a pipe
/// without a writer does not hang. A file that grows while it is read is bounded as well.
/// @param text   unspecified after a failure
/// @param reason set on failure only: the file and what the system says about it
bool readDocumentFile(const std::string& file, std::string& text, std::string& reason);

}  // namespace deskhost
