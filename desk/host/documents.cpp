#include "desk/host/documents.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>

#include "desk/base/files.h"
#include "desk/base/output.h"
#include "desk/base/text.h"
#include "desk/host/paths.h"
#include "desk/host/settings.h"

namespace deskhost {
namespace {

using desk::Descriptor;
using desk::systemReason;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kChunkBytes = std::size_t{64} << 10;

constexpr int kOpenFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// What keeps the open file from being read, or an empty text. Sets `size` to what it holds now.
std::string fileFault(int number, std::size_t& size) {
  struct stat status {};
  if (::fstat(number, &status) != 0) return systemReason(errno);
  if (S_ISDIR(status.st_mode)) return systemReason(EISDIR);
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  size = static_cast<std::size_t>(status.st_size);
  return size > settings().maxDocumentBytes ? tooLargeReason() : std::string();
}

std::string readAll(int number, std::size_t expected, std::string& text) {
  const std::size_t most = settings().maxDocumentBytes;
  std::size_t filled = 0;
  // One byte more than expected, so that the end of the file is seen without growing the text.
  text.resize(std::min(expected, most) + 1);
  for (;;) {
    if (filled == text.size()) text.resize(std::min(filled + kChunkBytes, most + 1));
    const ssize_t got = ::read(number, &text[filled], text.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return systemReason(errno);
    filled += static_cast<std::size_t>(got);
    if (filled > most) return tooLargeReason();
    if (got == 0) break;
  }
  text.resize(filled);
  return {};
}

/// `shown` is the name to give with a fault.
bool readAndParse(const std::string& name, const DocumentParser& parse, DocumentFault& fault,
                  std::string& shown) {
  std::string file;
  std::string text;
  if (!resolvePath(name, file, fault.reason)) return false;
  // What is wrong with a file that people have named is told of that.
  const bool isNamed = isPresented(name);
  if (isNamed) shown = file;
  if (settings().onRead) settings().onRead(file);
  if (readDocumentFile(file, text, fault.reason)) return parse(text, fault);
  if (!isNamed) fault.reason = file + ": " + fault.reason;
  return false;
}

/// Memory may be what is short: then the cause goes without the name.
void logCause(const std::string& name, const char* cause) noexcept {
  try {
    desk::log(name + ": " + cause);
  } catch (...) {
    desk::log(cause);
  }
}

/// What a pipe holds can be read once only.
bool readStandardInput(std::string& text, std::string& reason) {
  static std::string kept;
  static const std::string fault = readAll(STDIN_FILENO, 0, kept);
  text = kept;
  reason = fault;
  return fault.empty();
}

}  // namespace

std::string tooLargeReason() {
  return "larger than " + std::to_string(settings().maxDocumentBytes) + " bytes; " + kOnlyHere;
}

bool readDocumentFile(const std::string& file, std::string& text, std::string& reason) {
  if (file == desk::kStandardStream) return readStandardInput(text, reason);
  const Descriptor descriptor(::open(file.c_str(), kOpenFlags));
  std::size_t size = 0;
  std::string fault =
      descriptor.isOpen() ? fileFault(descriptor.number(), size) : systemReason(errno);
  if (fault.empty()) fault = readAll(descriptor.number(), size, text);
  if (!fault.empty()) reason = fault;
  return fault.empty();
}

DocumentFault faultAt(std::string_view text, std::size_t offset, const std::string& reason) {
  const std::string_view before = text.substr(0, offset);
  const auto lines = std::count(before.begin(), before.end(), '\n');
  std::size_t at = before.rfind('\n') + 1;  // 0 when there is none
  if (at == 0 && desk::startsWith(text, kByteOrderMark)) at = kByteOrderMark.size();
  int column = 1;
  for (; at < before.size(); ++column) {
    at += std::max<std::size_t>(desk::utf8CharacterSize(text, at), 1);
  }
  return {1 + static_cast<int>(lines), column, reason};
}

std::string faultText(const std::string& name, const DocumentFault& fault) {
  std::string text = (name.empty() ? "\"\"" : name) + ":";
  if (fault.line > 0) text += std::to_string(fault.line) + ":";
  if (fault.line > 0 && fault.column > 0) text += std::to_string(fault.column) + ":";
  return text + " " + fault.reason + (fault.isOnlyHere ? std::string("; ") + kOnlyHere : "");
}

bool loadDocument(const std::string& name, const DocumentParser& parse) noexcept {
  try {
    DocumentFault fault;
    std::string shown = name;
    if (readAndParse(name, parse, fault, shown)) return true;
    desk::log(faultText(shown, fault));
  } catch (const std::exception& error) {
    logCause(name, error.what());
  } catch (...) {
    logCause(name, "unknown failure");
  }
  return false;
}

}  // namespace deskhost
