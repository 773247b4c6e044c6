// The jobs in folders of this PC.
#pragma once

#include <string>
#include <vector>

namespace desk::job {

/// Whether `path` is a folder that can be looked into.
bool isFolder(const std::string& path);

/// The files below a folder whose names end as those of jobs do, sorted. Links to other folders and
/// folders that cannot be read are passed over.
std::vector<std::string> jobFilesBelow(const std::string& folder);

}  // namespace desk::job
