// What a panel runtime and its plug-in expect of each other: module/boundary.json.
#pragma once

#include <map>
#include <regex>
#include <string>
#include <vector>

namespace desk {

/// Names of C++ functions are as a programmer reads them, with their argument types.
struct Contract {
  std::vector<std::string> runtime;  ///< libraries that every controller has
  /// architecture -> version family -> the newest version that all controllers have
  std::map<std::string, std::map<std::string, std::string>> floors;
  std::vector<std::regex> imports;      ///< what hosts offer
  std::vector<std::string> mustImport;  ///< without these no script module can be registered
  std::vector<std::regex> exports;      ///< what hosts may find
  std::vector<std::string> mustExport;  ///< other than entry points and callbacks
  std::vector<std::string> entryPoints;
  std::vector<std::string> callbacks;
  std::string module;                 ///< the script module's name
  std::vector<std::string> commands;  ///< its functions
};

/// The contract that this program was built with.
const Contract& contract();

/// Whether one of `patterns` matches all of `name`.
bool matches(const std::string& name, const std::vector<std::regex>& patterns);

/// A symbol version such as GLIBC_2.17.
struct Version {
  std::string family;  ///< "GLIBC"
  std::vector<int> number;
};

/// Takes `text` apart; without a number at its end all of it is the family.
Version parseVersion(const std::string& text);

}  // namespace desk
