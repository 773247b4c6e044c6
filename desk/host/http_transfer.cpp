#include "desk/host/http_transfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <system_error>

#include "desk/host/settings.h"

namespace deskhost {
namespace {

/// What the library's callbacks count. They run below C code, so they must not throw: they leave a
/// code here, and words are found for it later.
struct Progress {
  CURL* handle = nullptr;
  desk::TemporaryFile* file = nullptr;
  std::size_t headerBytes = 0;
  std::size_t bodyBytes = 0;
  DownloadCode fault = DownloadCode::Done;
  bool inHeaders = false;     ///< where the fault is
  bool headersEnded = false;  ///< of the answer at hand: the library passes over a missing end
};

struct Cause {
  CURLcode error;
  DownloadCode code;
};

/// Every other error of the library is a transfer that broke off.
constexpr Cause kCauses[] = {
    {CURLE_UNSUPPORTED_PROTOCOL, DownloadCode::BadUrl},
    {CURLE_URL_MALFORMAT, DownloadCode::BadUrl},
    {CURLE_COULDNT_RESOLVE_HOST, DownloadCode::NoConnection},
    {CURLE_COULDNT_RESOLVE_PROXY, DownloadCode::NoConnection},
    {CURLE_COULDNT_CONNECT, DownloadCode::NoConnection},
    {CURLE_SSL_CONNECT_ERROR, DownloadCode::NoConnection},
    {CURLE_PEER_FAILED_VERIFICATION, DownloadCode::NoConnection},
    {CURLE_PROXY, DownloadCode::NoConnection},
    {CURLE_FILESIZE_EXCEEDED, DownloadCode::TooLarge},
    {CURLE_OPERATION_TIMEDOUT, DownloadCode::TooSlow},
    {CURLE_TOO_MANY_REDIRECTS, DownloadCode::TooManyRedirects},
};

using Handle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

long statusOf(CURL* handle) {
  long status = 0;
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
  return status;
}

bool isSuccess(long status, bool keeps) {
  if (settings().downloadFaults.keepsWhateverCame) return true;
  const bool withoutBody = status == 204 || status == 205;
  return status >= 200 && status < 300 && status != 206 && !(keeps && withoutBody);
}

/// Adds `size` to `sum` unless that exceeds `most`.
bool count(std::size_t& sum, std::size_t size, std::size_t most) {
  if (size > most || sum > most - size) return false;
  sum += size;
  return true;
}

std::size_t onHeader(char* line, std::size_t, std::size_t size, void* data) {
  Progress& progress = *static_cast<Progress*>(data);
  if (std::string_view(line, size).substr(0, 5) == "HTTP/") progress.headersEnded = false;
  if (*line == '\r' || *line == '\n') progress.headersEnded = true;
  if (count(progress.headerBytes, size, settings().download.maxHeaderBytes)) return size;
  progress.fault = DownloadCode::TooLarge;
  progress.inHeaders = true;
  return 0;
}

std::size_t onBody(char* bytes, std::size_t, std::size_t size, void* data) {
  Progress& progress = *static_cast<Progress*>(data);
  if (!isSuccess(statusOf(progress.handle), progress.file != nullptr)) {
    progress.fault = DownloadCode::HttpStatus;
  } else if (!count(progress.bodyBytes, size, settings().download.maxBytes)) {
    progress.fault = DownloadCode::TooLarge;
  } else if (progress.file != nullptr && !progress.file->write(bytes, size)) {
    progress.fault = DownloadCode::CannotWrite;
  }
  // Any other number than `size` ends the transfer.
  return progress.fault == DownloadCode::Done ? size : size + 1;
}

template <class Value>
bool set(const Handle& handle, CURLoption option, Value value) {
  return curl_easy_setopt(handle.get(), option, value) == CURLE_OK;
}

/// Nothing but http and https, also where a redirect leads.
bool setProtocols(const Handle& handle) {
#if LIBCURL_VERSION_NUM >= 0x075500
  return set(handle, CURLOPT_PROTOCOLS_STR, "http,https") &&
         set(handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
#else
  constexpr long kHttp = CURLPROTO_HTTP | CURLPROTO_HTTPS;
  return set(handle, CURLOPT_PROTOCOLS, kHttp) && set(handle, CURLOPT_REDIR_PROTOCOLS, kHttp);
#endif
}

bool setLimits(const Handle& handle) {
  const DownloadLimits& limits = settings().download;
  return setProtocols(handle) && set(handle, CURLOPT_FOLLOWLOCATION, 1L) &&
         set(handle, CURLOPT_MAXREDIRS, limits.maxRedirects) &&
         set(handle, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits.maxBytes)) &&
         set(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connectTime.count())) &&
         set(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(limits.totalTime.count())) &&
         set(handle, CURLOPT_LOW_SPEED_LIMIT, limits.stallSpeed) &&
         set(handle, CURLOPT_LOW_SPEED_TIME, static_cast<long>(limits.stallTime.count())) &&
         set(handle, CURLOPT_NOSIGNAL, 1L);
}

bool setUp(const Handle& handle, const std::string& url, Progress& progress, char* message) {
  return setLimits(handle) && set(handle, CURLOPT_URL, url.c_str()) &&
         set(handle, CURLOPT_USERAGENT, "cusdesk") && set(handle, CURLOPT_ERRORBUFFER, message) &&
         set(handle, CURLOPT_HEADERFUNCTION, onHeader) &&
         set(handle, CURLOPT_HEADERDATA, static_cast<void*>(&progress)) &&
         set(handle, CURLOPT_WRITEFUNCTION, onBody) &&
         set(handle, CURLOPT_WRITEDATA, static_cast<void*>(&progress));
}

DownloadResult statusResult(long status) {
  return {DownloadCode::HttpStatus, "HTTP status " + std::to_string(status)};
}

DownloadResult tooLarge(bool inHeaders) {
  const DownloadLimits& limits = settings().download;
  const std::size_t most = inHeaders ? limits.maxHeaderBytes : limits.maxBytes;
  return {DownloadCode::TooLarge, std::string(inHeaders ? "headers" : "document") +
                                      " larger than " + std::to_string(most) + " bytes"};
}

/// Words for a transfer that a callback ended.
DownloadResult endedByUs(const Progress& progress) {
  if (progress.fault == DownloadCode::HttpStatus) return statusResult(statusOf(progress.handle));
  if (progress.fault == DownloadCode::TooLarge) return tooLarge(progress.inHeaders);
  return {progress.fault, std::generic_category().message(progress.file->error())};
}

DownloadResult endedByLibrary(CURLcode error, const char* message) {
  if (error == CURLE_OUT_OF_MEMORY) {
    return {DownloadCode::TooLarge, "a header line is too long, or there is not enough memory"};
  }
  DownloadResult result{DownloadCode::Incomplete, *message ? message : curl_easy_strerror(error)};
  for (const Cause& cause : kCauses) {
    if (cause.error == error) result.code = cause.code;
  }
  return result;
}

}  // namespace

bool isHttpAddress(const std::string& url) {
  // Older transfer libraries take blanks for part of the path.
  const auto isBlankOrControl = [](unsigned char c) { return c <= ' ' || c == 0x7f; };
  if (std::any_of(url.begin(), url.end(), isBlankOrControl)) return false;
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parts(curl_url(), curl_url_cleanup);
  char* text = nullptr;
  if (!parts || curl_url_set(parts.get(), CURLUPART_URL, url.c_str(), 0) != CURLUE_OK ||
      curl_url_get(parts.get(), CURLUPART_SCHEME, &text, 0) != CURLUE_OK) {
    return false;
  }
  const std::string scheme = text;
  curl_free(text);
  return scheme == "http" || scheme == "https";
}

DownloadResult transfer(const std::string& url, desk::TemporaryFile* file) {
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  const Handle handle(ready == CURLE_OK ? curl_easy_init() : nullptr, curl_easy_cleanup);
  Progress progress;
  progress.handle = handle.get();
  progress.file = file;
  char message[CURL_ERROR_SIZE] = "";
  if (!handle || !setUp(handle, url, progress, message)) {
    return {DownloadCode::Internal, "the transfer library is unusable"};
  }
  const CURLcode error = curl_easy_perform(handle.get());
  const long status = statusOf(handle.get());
  if (progress.fault != DownloadCode::Done) return endedByUs(progress);
  if (status >= 400 && !isSuccess(status, file != nullptr)) return statusResult(status);
  if (error != CURLE_OK) return endedByLibrary(error, message);
  if (!progress.headersEnded) {
    return {DownloadCode::Incomplete, "the answer ends within its headers"};
  }
  return isSuccess(status, file != nullptr) ? DownloadResult{} : statusResult(status);
}

}  // namespace deskhost
