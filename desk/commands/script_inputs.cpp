#include "desk/commands/script_inputs.h"

#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/base/text.h"
#include "model/job_format.h"

namespace desk::commands {

Option jobOption() {
  return {"job", "FILE", "load this job before the script; '-' is standard input"};
}

void requireScript(const std::string& command, const std::string& file) {
  const std::string name = lowerCase(file);
  for (const model::JobFormatRow& row : model::kJobFormats) {
    if (!model::hasEnding(name, row.format)) continue;
    throw Error(kExitUsage, command + ": " + file + " is a job, not a script: give it with --job " +
                                file + ", or see 'cusdesk show " + file + "'");
  }
  requireReadable(file);
}

}  // namespace desk::commands
