# The general libraries for browsers, from the sources that tools/fetch-sources.sh unpacked. They stand
# under the names by which the rest of the build knows those of the system.
set(CUS_WEB_SOURCES ${PROJECT_SOURCE_DIR}/build/web-sources CACHE PATH
    "Where tools/fetch-sources.sh unpacked the packages of web/sources.txt")
enable_language(C)
set(CMAKE_C_FLAGS_RELEASE ${CMAKE_CXX_FLAGS_RELEASE})
set(CMAKE_POSITION_INDEPENDENT_CODE OFF)
set(generated ${PROJECT_BINARY_DIR}/generated)

# web_library(NAME INCLUDE_DIRECTORY SOURCE...): without warnings.
function(web_library name include)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} SYSTEM PUBLIC ${include} ${generated}/${name})
  target_compile_options(${name} PRIVATE -w)
  add_library(PkgConfig::${name} ALIAS ${name})
  set(${name}_INCLUDE_DIRS ${include} ${generated}/${name} PARENT_SCOPE)
endfunction()

set(source ${CUS_WEB_SOURCES}/libjsoncpp)
file(GLOB files ${source}/src/lib_json/*.cpp)
web_library(jsoncpp ${source}/include ${files})

web_library(tinyxml2 ${CUS_WEB_SOURCES}/tinyxml2 ${CUS_WEB_SOURCES}/tinyxml2/tinyxml2.cpp)

# As C++: errors of scripts are exceptions, which clean up what C++ holds between them. The package's
# own build makes the header.
set(source ${CUS_WEB_SOURCES}/lua5.3/src)
file(WRITE ${generated}/lua/lua5.3-deb-multiarch.h "#define DEB_HOST_MULTIARCH \"none\"\n")
file(GLOB files ${source}/l*.c)
list(REMOVE_ITEM files ${source}/lua.c ${source}/luac.c)
set_source_files_properties(${files} PROPERTIES LANGUAGE CXX)
web_library(lua ${source} ${files})
target_compile_definitions(lua PRIVATE LUA_COMPAT_5_2)
target_compile_options(lua PRIVATE -xc++)

set(source ${CUS_WEB_SOURCES}/expat/expat/lib)
file(WRITE ${generated}/expat/expat_config.h
     "#define BYTEORDER 1234\n#define XML_DEV_URANDOM 1\n#define XML_CONTEXT_BYTES 1024\n"
     "#define XML_DTD 1\n#define XML_NS 1\n")
web_library(expat ${source} ${source}/xmlparse.c ${source}/xmlrole.c ${source}/xmltok.c)

if(CUS_BUILD_TESTS)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set_property(TARGET Python3::Interpreter PROPERTY CROSSCOMPILING_EMULATOR)  # of this machine
endif()

# headers only: those of this machine, without what lies beside them
find_path(utf8cpp utf8.h PATHS /usr/include PATH_SUFFIXES utf8cpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(COPY ${utf8cpp}/ DESTINATION ${generated}/utf8cpp)
set(UTF8CPP_INCLUDE_DIR ${generated}/utf8cpp)

add_library(host_headers INTERFACE)
target_include_directories(host_headers INTERFACE ${PROJECT_SOURCE_DIR})
foreach(library jsoncpp tinyxml2 lua)
  target_include_directories(host_headers SYSTEM INTERFACE ${${library}_INCLUDE_DIRS})
endforeach()
