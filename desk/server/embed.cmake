# Writes OUTPUT, the C++ source of the page's files:
# cmake -DOUTPUT=... -DFILES=... -P embed.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/embed.cmake)

set(type_css "text/css; charset=utf-8")
set(type_html "text/html; charset=utf-8")
set(type_js "text/javascript; charset=utf-8")
set(type_svg "image/svg+xml")
set(arrays "")
set(rows "")
foreach(file IN LISTS FILES)
  cmake_path(GET file FILENAME name)
  cmake_path(GET name EXTENSION LAST_ONLY ending)
  string(SUBSTRING "${ending}" 1 -1 ending)
  if(NOT DEFINED type_${ending})
    message(FATAL_ERROR "what media type has ${name}? Add it to embed.cmake")
  endif()
  set(path /${name})
  if(name STREQUAL index.html)
    set(path /)
  endif()
  embedded_bytes(bytes ${file})
  string(MAKE_C_IDENTIFIER ${name} identifier)
  string(APPEND arrays "constexpr char ${identifier}[] = ${bytes};\n")
  string(APPEND rows
    "      {\"${path}\", \"${type_${ending}}\", ${identifier}, sizeof ${identifier} - 1},\n")
endforeach()
file(WRITE ${OUTPUT}
"// Written by desk/server/embed.cmake.
#include \"desk/server/page_files.h\"

namespace desk::server {

namespace {

${arrays}
}  // namespace

const std::vector<PageFile>& pageFiles() {
  static const std::vector<PageFile> kFiles = {
${rows}  };
  return kFiles;
}

}  // namespace desk::server
")
