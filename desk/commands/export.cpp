// cusdesk export: what editors, shells and readers of manuals want to know of jobs and scripts.
#include <cstdio>
#include <filesystem>

#include "desk/base/enum_option.h"
#include "desk/base/errors.h"
#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/commands/commands.h"
#include "desk/editor/editor_files.h"

namespace desk::commands {

namespace {

namespace fs = std::filesystem;

constexpr const char* kExampleEndings[] = {".lua", ".json", ".xml"};

struct Document {
  const char* name;
  const char* file;  ///< its name among the editor files; null: it is for somebody else
  std::string (*make)();
};
constexpr Document kDocuments[] = {
    {"schema", "cutting-job.schema.json", editor::jsonSchema},
    {"xsd", "cutting-job.xsd", editor::xmlSchema},
    {"stub", "cus_ParseModule.lua", editor::luaStub},
    {"panel-stub", "cusdesk_panel.lua", editor::panelStub},
    {"luacheckrc", "cus_ParseModule.luacheckrc", editor::luacheckConfig},
    {"completion", nullptr, bashCompletion},
    {"fish", nullptr, fishCompletion},
    {"man", nullptr, manPage},
    {"tables", nullptr, editor::manualTables},
};

int writeEditorFiles(const std::string& folder) {
  std::error_code ignored;  // writing tells
  std::filesystem::create_directories(folder, ignored);
  for (const Document& document : kDocuments) {
    if (document.file == nullptr) continue;
    const std::string path = folder + "/" + document.file;
    writeFile(path, document.make());
    std::puts(path.c_str());
  }
  return kExitOk;
}

/// Copies a file unless there is one of that name. Throws Error when that cannot be done.
void copyFile(const fs::path& from, const fs::path& to) {
  std::error_code reason;
  fs::create_directories(to.parent_path(), reason);
  fs::copy_file(from, to, fs::copy_options::skip_existing, reason);
  if (reason) throw cannotWrite(to.string(), reason.message());
}

/// The shipped scripts and jobs, and the controller's file system in which scripts find the jobs.
int writeExamples(const fs::path& folder) {
  const fs::path shipped = shippedExamples();
  for (const fs::path& file : fs::recursive_directory_iterator(shipped)) {
    if (!contains(kExampleEndings, file.extension().string())) continue;
    copyFile(file, folder / file.lexically_relative(shipped));
    copyFile(file, folder / file.filename());
    std::puts((folder / file.filename()).c_str());
  }
  return kExitOk;
}

int run(const Arguments& arguments) {
  const std::vector<std::string>& operands = arguments.operands;
  if (arguments.has("examples") && operands.empty()) {
    return writeExamples(arguments.value("examples"));
  }
  if (arguments.has("into") && operands.empty()) return writeEditorFiles(arguments.value("into"));
  if (arguments.has("into") || operands.size() != 1) {
    throw Error(kExitUsage, "export: name one thing, or a folder with --into");
  }
  const std::string text = choice(operands.front(), "export: what to export", kDocuments).make();
  std::fputs(text.c_str(), stdout);
  return kExitOk;
}

}  // namespace

Command exportCommand() {
  return {
      "export",
      "[schema|xsd|stub|panel-stub|luacheckrc|completion|fish|man|tables]",
      "write out what editors and shells want to know",
      "  cusdesk export --examples .             demo.lua, window.json and more, to try things on\n"
      "  cusdesk export --into .cusdesk          schema, XSD, Lua stubs and luacheck settings\n"
      "  cusdesk export schema > cutting-job.schema.json  one of them\n"
      "  source <(cusdesk export completion)     commands and options by Tab, in bash and zsh\n"
      "  cusdesk export fish | source            the same in fish\n"
      "  cusdesk export man > cusdesk.1          the manual page\n"
      "  cusdesk export tables > tables.md       the tables of the manual, in Markdown\n",
      {
          {"into", "DIR", "write all files for editors into this folder"},
          {"examples", "DIR", "copy the shipped scripts and jobs into this folder"},
      },
      run,
  };
}

}  // namespace desk::commands
