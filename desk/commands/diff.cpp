// cusdesk diff: what differs between two jobs.
#include <cstdio>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/commands/commands.h"
#include "desk/commands/show_job.h"
#include "desk/diff/reports.h"
#include "desk/job/job_file.h"

namespace desk::commands {

namespace {

struct Format {
  const char* name;
  std::string (*write)(const diff::JobDiff&, const diff::Files&, bool all);
};
constexpr Format kFormats[] = {
    {"text", [](const diff::JobDiff& diff, const diff::Files& files,
                bool all) { return textReport(diff, files, terminalOf(stdout), all); }},
    {"json", [](const diff::JobDiff& diff, const diff::Files& files, bool) {
       return jsonReport(diff, files);
     }}};

int run(const Arguments& arguments) {
  const Format& format = choice(arguments.value("format", "text"), "diff: --format", kFormats);
  const CheckedJob before(arguments.operands[0]);
  const CheckedJob after(arguments.operands[1]);
  const diff::Files files{job::shownName(arguments.operands[0]),
                          job::shownName(arguments.operands[1])};
  const diff::JobDiff differences =
      diff::compare({before.session().job().job, before.session().format()},
                    {after.session().job().job, after.session().format()});
  std::fputs(format.write(differences, files, arguments.has("all")).c_str(), stdout);
  return differences.isSame() ? kExitOk : kExitFindings;
}

}  // namespace

Command diffCommand() {
  return {
      "diff",
      "OLD NEW",
      "tell what differs between two job files, piece by piece",
      "  cusdesk diff window.json recut.json     pieces added, gone, changed or moved\n"
      "  cusdesk diff window.json window.xml     whether the machine gets the same of both\n",
      {
          {"format", "FORMAT", "text (default) or json", '\0', namesOf(kFormats)},
          {"all", nullptr, "name every piece, also of many that changed in the same way"},
      },
      run,
  };
}

}  // namespace desk::commands
