#include "desk/host/documents.h"

#include <exception>

#include "desk/base/output.h"
#include "desk/host/document_file.h"
#include "desk/host/paths.h"
#include "desk/host/settings.h"

namespace deskhost {
namespace {

/// `shown` is the name to give with a fault.
bool readAndParse(const std::string& name, const DocumentParser& parse, DocumentFault& fault,
                  std::string& shown) {
  std::string file;
  std::string text;
  if (!resolvePath(name, file, fault.reason)) return false;
  if (settings().onRead) settings().onRead(file);
  if (!readDocumentFile(file, text, fault.reason)) return false;
  // What is wrong in a document is told of the file that people at the desk can open.
  if (isPresented(name)) shown = file;
  return parse(text, fault);
}

/// Memory may be what is short: then the cause goes without the name.
void logCause(const std::string& name, const char* cause) noexcept {
  try {
    desk::log(name + ": " + cause);
  } catch (...) {
    desk::log(cause);
  }
}

}  // namespace

std::string describe(const std::string& name, const DocumentFault& fault) {
  std::string text = (name.empty() ? "\"\"" : name) + ":";
  if (fault.line > 0) text += std::to_string(fault.line) + ":";
  if (fault.line > 0 && fault.column > 0) text += std::to_string(fault.column) + ":";
  return text + " " + fault.reason;
}

bool loadDocument(const std::string& name, const DocumentParser& parse) noexcept {
  try {
    DocumentFault fault;
    std::string shown = name;
    if (readAndParse(name, parse, fault, shown)) return true;
    desk::log(describe(shown, fault));
  } catch (const std::exception& error) {
    logCause(name, error.what());
  } catch (...) {
    logCause(name, "unknown failure");
  }
  return false;
}

}  // namespace deskhost
