#include "desk/host/documents.h"

#include <exception>

#include "desk/host/document_file.h"
#include "desk/host/log.h"
#include "desk/host/paths.h"
#include "desk/host/settings.h"

namespace deskhost {
namespace {

bool readAndParse(const std::string& name, const DocumentParser& parse, DocumentFault& fault) {
  std::string file;
  std::string text;
  if (!resolvePath(name, file, fault.reason)) return false;
  if (settings().onRead) settings().onRead(file);
  return readDocumentFile(file, text, fault.reason) && parse(text, fault);
}

/// A place is given in the file that people at the desk can open.
std::string nameFor(const std::string& name, const DocumentFault& fault) {
  return fault.line > 0 && isPresented(name) ? settings().presented.at(name) : name;
}

/// Memory may be what is short: then the cause goes without the name.
void logCause(const std::string& name, const char* cause) noexcept {
  try {
    log(name + ": " + cause);
  } catch (...) {
    log(cause);
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
    if (readAndParse(name, parse, fault)) return true;
    log(describe(nameFor(name, fault), fault));
  } catch (const std::exception& error) {
    logCause(name, error.what());
  } catch (...) {
    logCause(name, "unknown failure");
  }
  return false;
}

}  // namespace deskhost
