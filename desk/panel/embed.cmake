# Writes OUTPUT, the C++ source of the page's files: cmake -DOUTPUT=... -DFOLDER=... -P embed.cmake
set(files
  "index.html|/|text/html\; charset=utf-8"
  "panel.css|/panel\\\\.css|text/css\; charset=utf-8"
  "panel.js|/panel\\\\.js|text/javascript\; charset=utf-8"
  "icon.svg|/icon\\\\.svg|image/svg+xml")
set(arrays "")
set(rows "")
foreach(file IN LISTS files)
  string(REGEX MATCH "^([^|]*)\\|([^|]*)\\|(.*)$" ignored "${file}")
  set(name ${CMAKE_MATCH_1})
  set(path ${CMAKE_MATCH_2})
  set(type ${CMAKE_MATCH_3})
  file(READ ${FOLDER}/${name} bytes HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  string(MAKE_C_IDENTIFIER ${name} identifier)
  string(APPEND arrays "constexpr char ${identifier}[] = \"${bytes}\";\n")
  string(APPEND rows "      {\"${path}\", \"${type}\", ${identifier}, sizeof ${identifier} - 1},\n")
endforeach()
file(WRITE ${OUTPUT}
"// Written by desk/panel/embed.cmake.
#include \"desk/panel/page_files.h\"

namespace desk {

namespace {

${arrays}
}  // namespace

const std::vector<PageFile>& pageFiles() {
  static const std::vector<PageFile> kFiles = {
${rows}  };
  return kFiles;
}

}  // namespace desk
")
