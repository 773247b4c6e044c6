// cusdesk view: jobs on a page of the browser.
#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/commands/commands.h"
#include "desk/commands/page_options.h"
#include "desk/job/job_file.h"

namespace desk::commands {

namespace {

constexpr std::size_t kMostJobs = 200;

int run(const Arguments& arguments) {
  const std::vector<std::string> files = job::jobFilesOf(arguments.operands);
  if (files.size() > kMostJobs) {
    throw Error(kExitUsage, "view: " + std::to_string(files.size()) +
                                " jobs, and the page takes up to " + std::to_string(kMostJobs));
  }
  for (const std::string& file : files) {
    if (job::isFolder(file)) throw cannotRead(file, job::kNoJobs);
    if (file != kStandardStream) requireReadable(file);
  }
  return showPage("view", arguments, files, "bars");
}

std::vector<Option> options() {
  std::vector<Option> options = pageOptions();
  for (const Option& option : panelOptions()) options.push_back(option);
  return options;
}

}  // namespace

Command viewCommand() {
  return {
      "view",
      "FILE...",
      "show jobs in the browser: bars, tables, findings, panel; follows them as they are saved",
      "  cusdesk view window.json                while you write it, check it or cut it\n"
      "  cusdesk view mnt                        all *.json and *.xml below a folder\n",
      options(),
      run,
  };
}

}  // namespace desk::commands
