#include "desk/job/job_file.h"

#include <exception>
#include <filesystem>
#include <utility>
#include <vector>

#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/host/documents.h"
#include "desk/host/settings.h"
#include "json/json_analysis.h"
#include "xml/xml_analysis.h"

namespace desk::job {

namespace {

constexpr std::size_t kShortestName = 5;  ///< getjson_Flash takes no shorter one

std::string contentOf(const std::string& file) {
  std::string text;
  std::string reason;
  if (!deskhost::readDocumentFile(file, text, reason)) throw cannotRead(file, reason);
  return text;
}

/// A name without folders that getjson_Flash takes, and that says the format.
std::string nameFor(const std::string& file, model::JobFormat format) {
  if (file == kStandardStream) return "stdin" + std::string(model::rowOf(format).ending);
  const std::string name = std::filesystem::path(file).filename().string();
  return name.size() < kShortestName ? "job-" + name : name;
}

/// Keeps what the services log while it lives.
class CaughtLog {
 public:
  CaughtLog() : before_(setLogSink([this](const std::string& line) { lines_.push_back(line); })) {}
  ~CaughtLog() { setLogSink(before_); }
  CaughtLog(const CaughtLog&) = delete;
  CaughtLog& operator=(const CaughtLog&) = delete;
  const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
  LogSink before_;
};

/// Why `load` does not load the job, or an empty text.
std::string reasonOf(const Load& load, const PresentedJob& job) {
  const CaughtLog log;
  long long code = 0;
  try {
    code = load(job);
  } catch (const std::exception& error) {
    return raisesText(error.what());
  }
  if (code == 0) return "";
  return log.lines().empty() ? answersText(code) : log.lines().back();
}

template <class Reader, int (Reader::*read)(std::string)>
int readWith(const std::string& path, DATA_T& data) {
  Reader reader;
  const int code = (reader.*read)(path);
  data = std::move(reader.data);
  return code;
}

// In the order of the formats.
constexpr int (*kReaders[])(const std::string& path, DATA_T& data) = {
    readWith<JsonAnalysis, &JsonAnalysis::jsonAnalysis>,
    readWith<XmlAnalysis, &XmlAnalysis::xmlAnalysis>};
static_assert(std::size(kReaders) == std::size(model::kJobFormats));

}  // namespace

std::string shownName(const std::string& file) {
  return file == kStandardStream ? "<stdin>" : file;
}

model::JobFormat formatOf(const std::string& file) {
  return formatOf(file, file == kStandardStream ? contentOf(file) : "");
}

model::JobFormat formatOf(const std::string& file, std::string_view text) {
  if (file != kStandardStream) return model::formatOfName(file);
  const std::size_t start = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
  const bool isXml = start != std::string_view::npos && text[start] == '<';
  return isXml ? model::JobFormat::Xml : model::JobFormat::Json;
}

std::string answersText(long long code) {
  return "the panel answers " + std::to_string(code);
}

std::string raisesText(const std::string& what) {
  return "loading raises \"" + what + "\"";
}

PresentedJob presentJob(const std::string& file) {
  PresentedJob job;
  job.format = formatOf(file, contentOf(file));
  job.name = nameFor(file, job.format);
  job.controllerPath = model::rowOf(job.format).flashDirectory + job.name;
  deskhost::settings().presented[job.controllerPath] = file;
  return job;
}

Error cannotLoad(const std::string& file, const std::string& reason) {
  // The services say where in the file the fault is: "a.json:3:1: reason".
  const std::string shown = shownName(file);
  std::string whole = reason.empty() ? shown : shown + ": " + reason;
  for (const std::string& name : {file, shown}) {
    if (startsWith(reason, name + ":")) whole = shown + reason.substr(name.size());
  }
  return {kExitIoError, "cannot load " + whole + "; cusdesk check " + file + " tells why"};
}

PresentedJob loadJob(const std::string& file, const Load& load) {
  PresentedJob job = presentJob(file);
  const std::string reason = reasonOf(load, job);
  if (!reason.empty()) throw cannotLoad(file, reason);
  return job;
}

DATA_T readJob(const std::string& file, StdoutRedirect::To lines) {
  const StdoutRedirect detour(lines);
  DATA_T data;
  loadJob(file, [&](const PresentedJob& job) {
    return kReaders[static_cast<std::size_t>(job.format)](job.controllerPath, data);
  });
  return data;
}

}  // namespace desk::job
