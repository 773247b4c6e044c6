// Job files of this PC: which of them a folder holds, and one of them under a name that scripts and
// the plug-in's readers can load, with what is said when it does not load.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "desk/base/errors.h"
#include "desk/base/output.h"
#include "model/job_format.h"
#include "model/job_records.h"

namespace desk::job {

/// The format that `file` is read as: as on a panel only a name that ends in ".xml" is an XML job.
/// Standard input, which has no name, is one when its text begins with '<'.
model::JobFormat formatOf(const std::string& file, std::string_view text);

/// The same for a file that need not be read otherwise. Throws Error when standard input cannot be.
model::JobFormat formatOf(const std::string& file);

/// What findings and tables call `file`.
std::string shownName(const std::string& file);

/// A job as the services present it.
struct PresentedJob {
  model::JobFormat format;
  std::string name;            ///< what to give to getjson_Flash
  std::string controllerPath;  ///< where the readers find it: below the flash directory of its type
};

/// Presents `file`, which may lie anywhere on this PC or be "-", as a file in the controller's
/// flash. Throws Error when it cannot be read.
PresentedJob presentJob(const std::string& file);

/// The error for a job that can be read and does not load.
/// @param reason what the panel makes of it; empty when that is not known
Error cannotLoad(const std::string& file, const std::string& reason = "");

/// Why a job does not load, for cannotLoad: of the panel's code, and of what loading it raises.
std::string answersText(long long code);
std::string raisesText(const std::string& what);

/// Loads a job and returns the panel's code for that: 0 for success.
using Load = std::function<long long(const PresentedJob&)>;

/// Presents `file` and lets `load` load it. Throws Error when it cannot be read, and cannotLoad
/// with the reason when that returns another code than 0 or throws.
PresentedJob loadJob(const std::string& file, const Load& load);

/// What the plug-in's own reader makes of `file`. Throws as loadJob does.
/// @param lines where the lines go that the reader writes
DATA_T readJob(const std::string& file, StdoutRedirect::To lines = StdoutRedirect::To::Nowhere);

/// Whether `path` is a folder that can be looked into.
bool isFolder(const std::string& path);

/// The files below a folder whose names end as those of jobs do, sorted. Links to other folders and
/// folders that cannot be read are passed over.
std::vector<std::string> jobFilesBelow(const std::string& folder);

/// The files that operands name, with the jobs of folders; a folder without any by its own name.
std::vector<std::string> jobFilesOf(const std::vector<std::string>& operands);

/// Why such a folder cannot be read.
inline constexpr char kNoJobs[] = "no *.json and no *.xml in this folder";

}  // namespace desk::job
