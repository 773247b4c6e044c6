#include "desk/job/job_file.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "desk/base/text.h"

namespace desk::job {

namespace fs = std::filesystem;

bool isFolder(const std::string& path) {
  std::error_code ignored;
  return fs::is_directory(path, ignored);
}

std::vector<std::string> jobFilesBelow(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code error;
  fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && at != fs::end(at); at.increment(error)) {
    std::error_code ignored;
    const std::string name = lowerCase(at->path().filename().string());
    const bool isJob =
        std::any_of(std::begin(model::kJobFormats), std::end(model::kJobFormats),
                    [&](const auto& row) { return model::hasEnding(name, row.format); });
    if (isJob && at->is_regular_file(ignored)) files.push_back(at->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<std::string> jobFilesOf(const std::vector<std::string>& operands) {
  std::vector<std::string> files;
  for (const std::string& operand : operands) {
    const std::vector<std::string> inside =
        isFolder(operand) ? jobFilesBelow(operand) : std::vector<std::string>{};
    files.insert(files.end(), inside.begin(), inside.end());
    if (inside.empty()) files.push_back(operand);
  }
  return files;
}

}  // namespace desk::job
