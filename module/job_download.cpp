// The download operations of the readers: fetch a job, then read it.
#include "host/cbl.h"
#include "json/json_analysis.h"
#include "model/job_format.h"
#include "xml/xml_analysis.h"

namespace {

/// Fetches `url` to `target` with the values that the host's downloader expects.
int fetch(const std::string& url, const std::string& target) {
  cbl::CHttpDownload download;
  return download.get(url, target, "", 0, -1);
}

int successOrFailure(int code) {
  return code < 0 ? code : 0;
}

}  // namespace

int JsonAnalysis::getJson(std::string url, std::string name) {
  const std::string target = model::rowOf(model::JobFormat::Json).flashDirectory + name + ".json";
  if (const int code = fetch(url, target); code < 0) return code;
  return successOrFailure(jsonAnalysis(target));
}

int XmlAnalysis::getXml(std::string url, std::string) {
  // kept: the download names no file, so the read that follows finds none
  const std::string target;
  if (const int code = fetch(url, target); code < 0) return code;
  return successOrFailure(xmlAnalysis(target));
}
