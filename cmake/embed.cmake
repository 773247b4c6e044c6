# Files as constants of C++.

# embedded_bytes(RESULT FILE): all of FILE as a string literal.
function(embedded_bytes result file)
  file(READ ${file} bytes HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${bytes}")
  set(${result} "\"${bytes}\"" PARENT_SCOPE)
endfunction()

# embed_files(TARGET FILE...): sources of TARGET may include FILE.h, by FILE's path in the project, for
# a constant with the file's bytes: values_lua for repl/values.lua.
function(embed_files target)
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file OUTPUT_VARIABLE input)
    cmake_path(RELATIVE_PATH input BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE path)
    set(output ${PROJECT_BINARY_DIR}/embedded/${path}.h)
    add_custom_command(OUTPUT ${output}
      COMMAND ${CMAKE_COMMAND} -DINPUT=${input} -DOUTPUT=${output}
        -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
      DEPENDS ${input} ${CMAKE_CURRENT_FUNCTION_LIST_FILE})
    target_sources(${target} PRIVATE ${output})
  endforeach()
  target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/embedded)
endfunction()

# As a script: cmake -DINPUT=... -DOUTPUT=... -P embed.cmake
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  cmake_path(GET INPUT FILENAME name)
  string(MAKE_C_IDENTIFIER ${name} identifier)
  embedded_bytes(bytes ${INPUT})
  file(WRITE ${OUTPUT} "#pragma once\n\ninline constexpr char ${identifier}[] = ${bytes};\n")
endif()
