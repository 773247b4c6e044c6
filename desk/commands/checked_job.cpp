#include "desk/commands/checked_job.h"

#include "desk/base/errors.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"

namespace desk::commands {

CheckedJob::CheckedJob(const std::string& file) : format_(model::formatOfName(file)) {
  Progress progress;
  progress.show("loading " + escapeControls(file));
  session_.check(file);
  if (!report().unreadable.empty()) throw Error(kExitIoError, report().unreadable.front().reason);
  if (session_.loads()) return;
  throw Error(kExitIoError, "cannot load " + file + "; cusdesk check " + file + " tells why");
}

}  // namespace desk::commands
