// One HTTP transfer within the limits of the settings, and what becomes of it.
#pragma once

#include <string>

#include "desk/base/files.h"

namespace deskhost {

/// What the downloader answers. A script sees these numbers as its error code.
enum class DownloadCode : int {
  Done = 0,
  BadUrl = -101,         ///< not an http or https address, or a redirect to something else
  NoConnection = -102,   ///< host or proxy not found, not reached, or not to be trusted
  HttpStatus = -103,     ///< the server answered with another status than a complete document's
  Incomplete = -104,     ///< the connection ended within the answer
  TooLarge = -105,       ///< body or headers exceed the limits
  TooSlow = -106,        ///< connecting, or the whole transfer, took too long, or it stalled
  CannotWrite = -107,    ///< no such directory, disk full, ...
  TargetRefused = -108,  ///< the target's name is refused, or it is no regular file
  TooManyRedirects = -109,
  NotADocument = -110,  ///< the target ends in .json or .xml and what came does not load as such
  Internal = -111,      ///< out of memory, or the transfer library is unusable
  InBrowser = -112,     ///< this is the desk for browsers, which connects to nothing
};

struct DownloadResult {
  DownloadCode code = DownloadCode::Done;
  std::string reason;  ///< empty when done
};

/// `url` with user name and password replaced by "***", fit for a log.
std::string withoutCredentials(const std::string& url);

/// Whether `url` is a well-formed http or https address.
bool isHttpAddress(const std::string& url);

/// Fetches `url`, following redirects, into `file`; null fetches and keeps nothing. Blocks.
///
/// Done means that a success status came with a body complete by the server's own account. A part
/// of a document that nobody asked for (206) is no success, nor is an answer without a body (204,
/// 205) where one is to be kept. `file` is left neither finished nor removed.
/// Proxies are taken from the environment; certificates are checked; no cookies, no .netrc.
DownloadResult transfer(const std::string& url, desk::TemporaryFile* file);

}  // namespace deskhost
