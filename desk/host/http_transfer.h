// One HTTP transfer within the limits of the settings.
#pragma once

#include <string>

#include "desk/base/files.h"
#include "desk/host/download_codes.h"

namespace deskhost {

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
