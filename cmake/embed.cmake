# Files as constants of C++.

# embedded_bytes(RESULT FILE): all of FILE as a string literal.
function(embedded_bytes result file)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  set(${result} "\"${bytes}\"" PARENT_SCOPE)
endfunction()

# embed_files(TARGET FILE...): sources of TARGET may include FILE.h, by FILE's path in the project, for
# a constant with the file's bytes: values_lua for repl/values.lua. The headers are there once the
# build is configured, and a file that changes configures it again.
function(embed_files target)
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file OUTPUT_VARIABLE input)
    cmake_path(RELATIVE_PATH input BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE path)
    cmake_path(GET input FILENAME name)
    string(MAKE_C_IDENTIFIER ${name} identifier)
    embedded_bytes(bytes ${input})
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/embedded/${path}.h @ONLY
      CONTENT "#pragma once\n\ninline constexpr char @identifier@[] = @bytes@;\n")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${input})
  endforeach()
  target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/embedded)
endfunction()
