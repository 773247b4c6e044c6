#include "desk/doctor/build_note.h"

#include <sstream>

namespace desk::doctor {

BuildNote readBuildNote(std::string_view text) {
  BuildNote note;
  std::istringstream lines(std::string(text.substr(0, text.find('\0'))));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    SharedClasses found;
    words >> found.name >> found.version >> found.type >> found.size >> found.library;
    if (found.name == "libCustom_LuaParseModule") {
      note.version = found.version;
    } else if (found.name == "Lua") {
      note.lua = found.words();
    } else if (!found.size.empty()) {
      note.libraries.push_back(std::move(found));
    }
  }
  return note;
}

}  // namespace desk::doctor
