# The ARM toolchains find an SDK's packages wherever its makers put their descriptions.
#
# Usage: cmake -DTOOLCHAINS=FOLDER -DCUS_SYSROOT=SCRATCH -P sdk_layouts_test.cmake
foreach(target armhf:arm-linux-gnueabihf arm64:aarch64-linux-gnu)
  string(REGEX MATCH "(.*):(.*)" whole ${target})
  set(architecture ${CMAKE_MATCH_1})
  foreach(folder usr/lib/${CMAKE_MATCH_2} usr/lib usr/lib64 usr/share)
    file(REMOVE_RECURSE ${CUS_SYSROOT})
    file(WRITE ${CUS_SYSROOT}/${folder}/pkgconfig/panelsdk.pc
      "Name: panelsdk\nDescription: made up\nVersion: 1\nCflags: -I/opt/panelsdk\n")
    include(${TOOLCHAINS}/${architecture}.cmake)
    execute_process(COMMAND pkg-config --cflags panelsdk OUTPUT_VARIABLE found
      OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT found STREQUAL "-I${CUS_SYSROOT}/opt/panelsdk")
      message(SEND_ERROR "${architecture}: in ${folder} it finds '${found}'")
    endif()
  endforeach()
endforeach()
