#include "desk/job/job_file.h"

#include <filesystem>

#include "desk/base/errors.h"
#include "desk/host/settings.h"
#include "json/json_analysis.h"
#include "xml/xml_analysis.h"

namespace desk::job {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShortestName = 5;  ///< getjson_Flash takes no shorter one

bool isXmlName(const std::string& name) {
  constexpr char kExtension[] = ".xml";
  const std::size_t length = sizeof kExtension - 1;
  return name.size() >= length && name.compare(name.size() - length, length, kExtension) == 0;
}

}  // namespace

PresentedJob presentJob(const std::string& file) {
  std::error_code error;
  if (!fs::exists(file, error)) {
    const std::string reason = error ? error.message() : "no such file";
    throw Error(kExitCannot, "cannot read " + file + ": " + reason);
  }
  PresentedJob job;
  job.name = fs::path(file).filename().string();
  if (job.name.empty()) throw Error(kExitCannot, "cannot read " + file + ": it is a directory");
  if (job.name.size() < kShortestName) job.name = "job-" + job.name;
  job.controllerPath = (isXmlName(job.name) ? kFlashXmlDirectory : kFlashJsonDirectory) + job.name;
  deskhost::settings().presented[job.controllerPath] = fs::absolute(file).string();
  return job;
}

}  // namespace desk::job
