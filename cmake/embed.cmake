# Files as constants of C++.

# embedded_bytes(RESULT FILE): all of FILE as a string literal.
function(embedded_bytes result file)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  set(${result} "\"${bytes}\"" PARENT_SCOPE)
endfunction()

# sha256_base64(RESULT FILE): the SHA-256 sum of FILE in base64, as content policies name a style.
function(sha256_base64 result file)
  set(digits ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  file(SHA256 ${file} sum)
  string(APPEND sum 00)  # whole groups of three bytes
  string(REGEX MATCHALL "......" groups ${sum})
  set(text "")
  foreach(group IN LISTS groups)
    foreach(shift 18 12 6 0)
      math(EXPR digit "(0x${group} >> ${shift}) & 63")
      string(SUBSTRING ${digits} ${digit} 1 digit)
      string(APPEND text ${digit})
    endforeach()
  endforeach()
  string(REGEX REPLACE "A$" "=" text ${text})  # the byte that is none
  set(${result} ${text} PARENT_SCOPE)
endfunction()

# embed_files(TARGET FILE...): sources of TARGET may include FILE.h, by FILE's path in the project, for
# constants with the file's bytes and their sum: values_lua and values_lua_sha256 for repl/values.lua.
# The headers are there once the build is configured, and a file that changes configures it again.
function(embed_files target)
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file OUTPUT_VARIABLE input)
    cmake_path(RELATIVE_PATH input BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE path)
    cmake_path(GET input FILENAME name)
    string(MAKE_C_IDENTIFIER ${name} identifier)
    embedded_bytes(bytes ${input})
    sha256_base64(sum ${input})
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/embedded/${path}.h @ONLY
      CONTENT "#pragma once\n\ninline constexpr char @identifier@[] = @bytes@;
inline constexpr char @identifier@_sha256[] = \"@sum@\";\n")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${input})
  endforeach()
  target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/embedded)
endfunction()
