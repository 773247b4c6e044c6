// Fuzz target: the script commands from Lua, with file names, addresses, answers and jobs as bytes.
//
// Steps: w DIGIT|TEXT writes a job file (0 flash json, 1 flash xml, 2 usb json, 3 usb xml);
// d CODE|TEXT says what the next download brings; U, F NAME and L URL|NAME load; A, W CODE,
// C NUMBER, H, P, D CODE query; S FIRST|SECOND saves the progress; t TYPE sets the file type.
#include <cstdlib>

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "fuzz/lines.h"
#include "fuzz/script_state.h"
#include "fuzz/surroundings.h"
#include "fuzz/target.h"
#include "host/cbl.h"
#include "module/load_commands.h"
#include "module/readers.h"

namespace {

using fuzzing::require;
using fuzzing::Step;

constexpr const char* kFiles[] = {"root/mnt/data/CustomFileDir/JsonFile/job.json",
                                  "root/mnt/data/CustomFileDir/XmlFile/job.xml",
                                  "usb/json/job.json", "usb/xml/job.xml"};

struct {
  int code = -1;
  std::string text;
} nextDownload;

/// Whether the argument reaches Lua as it stands: as a text.
bool isText(const std::string& argument) {
  return argument != "!" && argument != "?" && argument[0] != '#';
}

std::string loadResult(lua_State* L) {
  lua_getfield(L, -1, "errorCode");
  const int code = static_cast<int>(lua_tointeger(L, -1));
  require(lua_isinteger(L, -1), "an error code that is no integer");
  lua_pop(L, 1);
  lua_getfield(L, -1, "info");
  const std::string info = lua_tostring(L, -1);
  lua_pop(L, 1);
  require(info == loadMessage(code, static_cast<model::JobFormat>(nFileType)),
          "the message of another code");
  return std::to_string(code);
}

void load(const char* function, const Step& step) {
  const unsigned allowed = fuzzing::kShortName | fuzzing::kStod | fuzzing::kNullText;
  const std::string result = fuzzing::callModule(function, step.arguments, allowed, loadResult);
  const std::string name = std::string(step.text(0).c_str());
  if (!isText(step.text(0))) return;
  const bool tooShort = name.size() < 5;
  require(!tooShort || result.rfind("throws basic_string::substr", 0) == 0, "a short name passed");
  require(tooShort || result.find("substr") == std::string::npos, "a long name was too short");
}

void download(const Step& step) {
  const bool anotherType = currentReader() == nullptr;
  const unsigned allowed = fuzzing::kStod | fuzzing::kNullText;
  const std::vector<std::string> both = {step.text(0), step.text(1)};
  if (anotherType) {
    fuzzing::callModule("getjson_url", both, allowed, fuzzing::valueAsText);
  } else {
    fuzzing::callModule("getjson_url", both, allowed, loadResult);
  }
}

/// A query command, and which exceptions it may throw. What its rows hold is for the sessions.
constexpr struct {
  const char* function;
  unsigned allowed;
  char step;
  bool takesArgument;
} kQueries[] = {
    {"get_work", fuzzing::kNone, 'A', false},  {"get_work", fuzzing::kNone, 'W', true},
    {"get_cut", fuzzing::kStoi, 'C', true},    {"get_hole", fuzzing::kStod, 'H', false},
    {"get_print", fuzzing::kNone, 'P', false}, {"get_Dimensions", fuzzing::kNone, 'D', true},
};

void ask(const Step& step) {
  for (const auto& query : kQueries) {
    if (query.step != step.name) continue;
    const std::string argument = query.takesArgument ? step.text(0) : "";
    fuzzing::callModule(query.function, {argument}, query.allowed, fuzzing::rowsAsText);
  }
}

void saveProgress(const Step& step) {
  const std::vector<std::string> both = {step.text(0), step.text(1)};
  const std::string got =
      fuzzing::callModule("save_cutCurIndex", both, fuzzing::kNone, fuzzing::valueAsText);
  if (!isText(both[0]) || !isText(both[1])) return;
  require(got == fuzzing::textOf(both[1]), "saving gives back something else");
  const std::string written = std::string(both[0].c_str()) + "\n" + both[1].c_str() + "\n";
  require(fuzzing::files().read("progress.txt") == written, "the progress file holds another text");
}

void take(const Step& step) {
  ask(step);
  switch (step.name) {
    case 'w':
      return fuzzing::files().write(kFiles[step.number(0) & 3], step.text(1));
    case 'd':
      nextDownload.code = step.number(0);
      nextDownload.text = step.text(1);
      return;
    case 't':
      nFileType = step.number(0);
      return;
    case 'U':
      return load("getjson_uDisk", step);
    case 'F':
      return load("getjson_Flash", step);
    case 'L':
      return download(step);
    case 'S':
      return saveProgress(step);
    default:
      return;
  }
}

}  // namespace

// The host's downloader, without a network: what an input says is what arrives.
namespace cbl {
CHttpDownload::CHttpDownload() = default;
CHttpDownload::~CHttpDownload() = default;
int CHttpDownload::get(const std::string&, const std::string& target, const std::string& third,
                       long long a, long long b) {
  require(third.empty() && a == 0 && b == -1, "the downloader is called in another way");
  require(target.empty() == (nFileType == fileTypeOf(model::JobFormat::Xml)),
          "a target for XML, or none for JSON");
  if (nextDownload.code >= 0) fuzzing::files().write(kFiles[0], nextDownload.text);
  return nextDownload.code;
}
}  // namespace cbl

std::size_t fuzzing::slotCount() {
  return 0;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzzing::setUpServices();
  ::setenv("CUS_CUTCURINDEX_FILE", fuzzing::files().path("progress.txt").c_str(), 1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (const Step& step : fuzzing::stepsOf(data, size)) take(step);
  lua_gc(fuzzing::scriptState(), LUA_GCCOLLECT, 0);
  return 0;
}
