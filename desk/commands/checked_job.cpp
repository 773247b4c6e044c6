#include "desk/commands/checked_job.h"

#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"
#include "desk/job/job_file.h"

namespace desk::commands {

CheckedJob::CheckedJob(const std::string& file) : format_(job::formatOf(file)) {
  Progress progress;
  progress.show("loading " + escapeControls(job::shownName(file)));
  session_.check(file);
  if (!report().unreadable.empty()) throw Error(kExitIoError, report().unreadable.front().reason);
  if (session_.loads()) return;
  job::readJob(file);  // says why
  throw job::cannotLoad(file);
}

}  // namespace desk::commands
