#include "desk/doctor/contract.h"

#include <json/json.h>

#include <charconv>
#include <memory>
#include <sstream>

#include "boundary.h"

namespace desk {

namespace {

std::vector<std::string> names(const Json::Value& list) {
  std::vector<std::string> result;
  for (const Json::Value& name : list) result.push_back(name.asString());
  return result;
}

std::vector<std::regex> patterns(const Json::Value& list) {
  std::vector<std::regex> result;
  for (const Json::Value& pattern : list) result.emplace_back(pattern.asString());
  return result;
}

Json::Value boundary() {
  Json::Value root;
  std::istringstream(kBoundaryJson) >> root;
  return root;
}

Contract makeContract() {
  const Json::Value root = boundary();
  Contract result;
  result.runtime = names(root["runtime"]);
  for (const std::string& architecture : root["floors"].getMemberNames()) {
    const Json::Value& floors = root["floors"][architecture];
    for (const std::string& family : floors.getMemberNames()) {
      result.floors[architecture][family] = floors[family].asString();
    }
  }
  result.imports = patterns(root["imports"]);
  result.mustImport = names(root["must_import"]);
  result.exports = patterns(root["exports"]);
  result.mustExport = names(root["must_export"]);
  result.entryPoints = names(root["entry_points"]);
  result.callbacks = names(root["callbacks"]);
  result.module = root["module"].asString();
  result.commands = names(root["commands"]);
  return result;
}

}  // namespace

const Contract& contract() {
  static const Contract kContract = makeContract();
  return kContract;
}

bool matches(const std::string& name, const std::vector<std::regex>& patterns) {
  for (const std::regex& pattern : patterns) {
    if (std::regex_match(name, pattern)) return true;
  }
  return false;
}

Version parseVersion(const std::string& text) {
  const std::size_t split = text.rfind('_');
  if (split == std::string::npos || split + 1 == text.size() ||
      text.find_first_not_of("0123456789.", split + 1) != std::string::npos) {
    return {text, {}};
  }
  Version version{text.substr(0, split), {}};
  std::istringstream parts(text.substr(split + 1));
  for (std::string part; std::getline(parts, part, '.');) {
    std::from_chars(part.data(), part.data() + part.size(), version.number.emplace_back());
  }
  return version;
}

}  // namespace desk
