// What a plug-in's note says of its build (module/build_note.cpp writes it).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desk::doctor {

/// A library whose classes host and plug-in hand each other.
struct SharedClasses {
  std::string name;     ///< "jsoncpp"
  std::string version;  ///< "1.9.5"
  std::string type;     ///< "Json::Value", whose size tells one layout from another
  std::string size;     ///< in bytes
  std::string library;  ///< "libjsoncpp.so.25"; empty: not known

  /// "jsoncpp 1.9.5"
  std::string words() const { return name + " " + version; }
};

struct BuildNote {
  std::string version;  ///< of the plug-in; empty: the file has no such note
  std::vector<SharedClasses> libraries;
  std::string lua;  ///< "Lua 5.3"
};

inline constexpr char kBuildNoteOwner[] = "cus_ParseModule";

/// Lines that are not understood are passed by.
BuildNote readBuildNote(std::string_view text);

}  // namespace desk::doctor
