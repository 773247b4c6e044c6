#include "desk/job/job_file.h"

#include <filesystem>

#include "desk/base/errors.h"
#include "desk/host/settings.h"
#include "model/job_format.h"

namespace desk::job {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShortestName = 5;  ///< getjson_Flash takes no shorter one

}  // namespace

PresentedJob presentJob(const std::string& file) {
  std::error_code error;
  if (!fs::exists(file, error)) {
    const std::string reason = error ? error.message() : "no such file";
    throw Error(kExitIoError, "cannot read " + file + ": " + reason);
  }
  PresentedJob job;
  job.name = fs::path(file).filename().string();
  if (job.name.empty()) throw Error(kExitIoError, "cannot read " + file + ": it is a directory");
  if (job.name.size() < kShortestName) job.name = "job-" + job.name;
  job.controllerPath = model::rowOf(model::formatOfName(job.name)).flashDirectory + job.name;
  deskhost::settings().presented[job.controllerPath] = fs::absolute(file).string();
  return job;
}

}  // namespace desk::job
