# The general libraries, all from the distribution. The plug-in only needs their headers: the host
# process brings the code.
find_package(PkgConfig REQUIRED)
pkg_check_modules(jsoncpp REQUIRED IMPORTED_TARGET GLOBAL jsoncpp)
pkg_check_modules(tinyxml2 REQUIRED IMPORTED_TARGET GLOBAL tinyxml2)
pkg_check_modules(lua REQUIRED IMPORTED_TARGET GLOBAL lua5.3-c++)
# The names that programs ask for, such as libjsoncpp.so.25; empty where only headers are.
foreach(library jsoncpp tinyxml2)
  set(${library}_NAME "")
  foreach(file IN LISTS ${library}_LINK_LIBRARIES)
    if(file MATCHES "lib${library}" AND IS_SYMLINK "${file}")
      file(READ_SYMLINK "${file}" file)
      cmake_path(GET file FILENAME ${library}_NAME)
    endif()
  endforeach()
endforeach()
# UTF-8 iteration, headers only
find_path(UTF8CPP_INCLUDE_DIR utf8.h PATH_SUFFIXES utf8cpp REQUIRED)

add_library(host_headers INTERFACE)
target_include_directories(host_headers INTERFACE ${PROJECT_SOURCE_DIR})
foreach(library jsoncpp tinyxml2 lua)
  target_include_directories(host_headers SYSTEM INTERFACE ${${library}_INCLUDE_DIRS})
endforeach()

if(CUS_BUILD_DESK)
  pkg_check_modules(libcurl REQUIRED IMPORTED_TARGET GLOBAL libcurl)
  pkg_check_modules(libedit REQUIRED IMPORTED_TARGET GLOBAL libedit)
  pkg_check_modules(expat REQUIRED IMPORTED_TARGET GLOBAL expat)
  pkg_check_modules(libelf REQUIRED IMPORTED_TARGET GLOBAL libelf)
  if(CUS_PANEL_PAGE)
    # Without pkg-config, which wants the files of GnuTLS for it that no build here needs.
    find_path(MICROHTTPD_INCLUDE_DIR microhttpd.h REQUIRED)
    find_library(MICROHTTPD_LIBRARY microhttpd REQUIRED)
  endif()
  find_package(Threads REQUIRED)
endif()
if(CUS_BUILD_TESTS)
  find_package(GTest REQUIRED)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  # a program of this machine, also when everything else is for another
  set_property(TARGET Python3::Interpreter PROPERTY CROSSCOMPILING_EMULATOR)
endif()
