#include <sys/stat.h>

#include <json/value.h>
#include <tinyxml2.h>

#include <algorithm>
#include <exception>

#include "desk/base/files.h"
#include "desk/base/output.h"
#include "desk/base/text.h"
#include "desk/host/documents.h"
#include "desk/host/http_transfer.h"
#include "desk/host/paths.h"
#include "desk/host/settings.h"
#include "host/cbl.h"

namespace deskhost {
namespace {

/// What a server that sent no job is likely to have sent.
std::string likenessOf(const std::string& text) {
  const std::string start = desk::lowerCase(text.substr(0, text.find('>')));
  if (desk::startsWith(text, "\x1f\x8b")) return "; it is compressed (gzip), unasked";
  if (start.find("<html") != std::string::npos || start.find("<!doctype html") == 0) {
    return "; it is a web page";
  }
  return text.empty() ? "; nothing came" : "";
}

/// A job that does not load must not take the place of one that does.
bool loadsAsItsTarget(const std::string& target, const std::string& file, std::string& reason) {
  const bool isJson = desk::endsWith(target, ".json");
  const bool isXml = desk::endsWith(target, ".xml");
  std::string text;
  if (!isJson && !isXml) return true;
  if (!readDocumentFile(file, text, reason)) return false;
  Json::Value root;
  tinyxml2::XMLDocument document;
  DocumentFault fault;
  if (isJson ? parseJson(text, root, fault) : parseXml(text, document, fault)) return true;
  reason = faultText(std::string("what came is no ") + (isJson ? "JSON" : "XML"), fault) +
           likenessOf(text);
  return false;
}

bool findTarget(const std::string& target, std::string& file, std::string& reason) {
  if (!resolvePath(target, file, reason)) return false;
  if (isPresented(target)) {
    reason = file + ": stands in for this name and is not to be overwritten";
    return false;
  }
  struct stat status {};
  if (::lstat(file.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return true;
  reason = file + ": not a regular file";
  return false;
}

/// Puts in place what came of an answer, however it ended.
DownloadResult keepAnyway(desk::TemporaryFile& file, const DownloadResult& result) {
  if (result.code != DownloadCode::Done && result.code != DownloadCode::Incomplete) return result;
  std::string reason;
  if (!file.commit(reason)) return {DownloadCode::CannotWrite, reason};
  return {};
}

DownloadResult fetchInto(const std::string& url, const std::string& target) {
  std::string file, reason;
  desk::TemporaryFile temporary;
  if (!findTarget(target, file, reason)) return {DownloadCode::TargetRefused, reason};
  if (!temporary.create(file, reason)) return {DownloadCode::CannotWrite, reason};
  DownloadResult result = transfer(url, &temporary);
  if (settings().downloadFaults.keepsWhateverCame) return keepAnyway(temporary, result);
  if (result.code != DownloadCode::Done) return result;
  if (!loadsAsItsTarget(target, temporary.path(), reason)) {
    return {DownloadCode::NotADocument, reason};
  }
  if (!temporary.commit(reason)) return {DownloadCode::CannotWrite, reason};
  return result;
}

DownloadResult fetch(const std::string& url, const std::string& target) {
  if (!isHttpAddress(url)) return {DownloadCode::BadUrl, "not an http or https address"};
  return target.empty() ? transfer(url, nullptr) : fetchInto(url, target);
}

void logFailure(const std::string& url, const std::string& target, const DownloadResult& result) {
  const std::string into = target.empty() ? target : " into " + target;
  desk::log("download of " + withoutCredentials(url) + into + " failed (" +
            std::to_string(static_cast<int>(result.code)) + "): " + result.reason);
}

/// The plug-in names no file for a download after an XML job.
void logNothingKept(const std::string& url) {
  desk::log("download of " + withoutCredentials(url) +
            ": after an XML job a download is neither kept nor read; load a JSON job first");
}

}  // namespace

std::string withoutCredentials(const std::string& url) {
  // The transfer library takes one slash or three for the two that belong there.
  const std::size_t scheme = url.find(":/");
  const std::size_t start = scheme == std::string::npos
                                ? 0
                                : std::min(url.find_first_not_of('/', scheme + 1), url.size());
  // In an address that is not well formed nobody knows where the password ends.
  const std::size_t end = isHttpAddress(url) ? url.find_first_of("/?#", start) : std::string::npos;
  const std::size_t at = url.substr(0, end).rfind('@');
  if (at == std::string::npos || at < start) return url;
  return url.substr(0, start) + "***" + url.substr(at);
}

}  // namespace deskhost

namespace cbl {

CHttpDownload::CHttpDownload() = default;
CHttpDownload::~CHttpDownload() = default;

int CHttpDownload::get(const std::string& url, const std::string& target, const std::string&,
                       long long, long long) {
  if (const std::optional<int> code = deskhost::settings().downloadFaults.code) return *code;
  deskhost::DownloadResult result{deskhost::DownloadCode::Internal, {}};
  try {
    result = deskhost::fetch(url, target);
    if (result.code != deskhost::DownloadCode::Done) {
      deskhost::logFailure(url, target, result);
    } else if (target.empty()) {
      deskhost::logNothingKept(url);
    }
  } catch (const std::exception& error) {
    desk::log(error.what());
  }
  return static_cast<int>(result.code);
}

}  // namespace cbl
