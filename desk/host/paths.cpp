#include "desk/host/paths.h"

#include <climits>
#include <filesystem>
#include <sstream>

#include "desk/base/text.h"
#include "desk/host/settings.h"
#include "host/media.h"

namespace deskhost {
namespace {

namespace fs = std::filesystem;

constexpr char kNoUsbMount[] = "/no-usb-disk/";

/// What is wrong with the name as a text, or nothing.
const char* nameFault(const std::string& name) {
  if (name.empty()) return "no file is named";
  if (name.find('\0') != std::string::npos) return "the name holds a zero byte";
  if (!desk::isUtf8(name)) return "the name is not UTF-8";
  if (name.front() != '/') return "the name is relative";
  if (name.size() >= PATH_MAX) return "the name is too long";
  return nullptr;
}

/// What is wrong with the components below root directory or disk, or nothing.
const char* componentFault(const std::string& below) {
  std::istringstream components(below);
  std::string component;
  bool named = false;
  while (std::getline(components, component, '/')) {
    if (component == "..") return "the name holds '..'";
    if (component.size() > NAME_MAX) return "the name is too long";
    named = !component.empty() && component != ".";
  }
  return named && below.back() != '/' ? nullptr : "the name is that of a directory";
}

/// A link that leads nowhere may come to lead outside once something is created through it.
bool passesBrokenLink(fs::path path, const fs::path& base) {
  for (; path != base; path = path.parent_path()) {
    std::error_code ignored;
    if (fs::is_symlink(fs::symlink_status(path, ignored))) return true;
  }
  return false;
}

bool resolveBelow(const std::string& directory, const std::string& below, std::string& file,
                  std::string& reason) {
  std::error_code error;
  const fs::path base = fs::canonical(directory, error);
  if (error) {
    reason = directory + ": " + error.message();
    return false;
  }
  const fs::path path = fs::weakly_canonical(base / below, error);
  const std::string prefix = base == base.root_path() ? base.string() : base.string() + "/";
  if (error) {
    reason = error.message();
  } else if (!desk::startsWith(path.string(), prefix)) {
    reason = "a symbolic link leads outside of " + base.string();
  } else if (passesBrokenLink(path, base)) {
    reason = "a symbolic link leads nowhere";
  } else {
    file = path.string();
    return true;
  }
  return false;
}

std::string withoutLeadingSlashes(const std::string& name) {
  const std::size_t start = name.find_first_not_of('/');
  return start == std::string::npos ? std::string() : name.substr(start);
}

}  // namespace

std::string usbMount() {
  if (settings().usb.empty()) return kNoUsbMount;
  std::error_code error;
  const fs::path mount = fs::absolute(settings().usb, error).lexically_normal() / "";
  return error || mount == "/" ? kNoUsbMount : mount.string();
}

bool resolvePath(const std::string& name, std::string& file, std::string& reason) {
  const std::string mount = usbMount();
  const char* fault = nameFault(name);
  const bool onUsb = fault == nullptr && desk::startsWith(name, mount);
  const std::string below = withoutLeadingSlashes(onUsb ? name.substr(mount.size()) : name);
  if (fault == nullptr) fault = componentFault(below);
  if (fault == nullptr && isPresented(name)) {
    file = settings().presented.at(name);
    return true;
  }
  if (fault == nullptr && onUsb && mount == kNoUsbMount) fault = "there is no USB disk";
  if (fault == nullptr && !onUsb && settings().root.empty()) fault = "there is no root directory";
  if (fault != nullptr) {
    reason = fault;
    return false;
  }
  return resolveBelow(onUsb ? mount : settings().root, below, file, reason);
}

bool isPresented(const std::string& name) {
  return settings().presented.count(name) != 0;
}

}  // namespace deskhost

void CHmiMedia::getUdiskPath(std::string& path) {
  path = deskhost::usbMount();
}
