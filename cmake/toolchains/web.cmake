# WebAssembly for browsers and Node.js, by Debian's emscripten.
set(EMSCRIPTEN_ROOT_PATH /usr/share/emscripten)
include(${EMSCRIPTEN_ROOT_PATH}/cmake/Modules/Platform/Emscripten.cmake)
# Runs it on the files of this PC.
set(CMAKE_CROSSCOMPILING_EMULATOR node ${CMAKE_SOURCE_DIR}/web/cusdesk.cjs)
# Every object and the program alike: exceptions of the machine, not of JavaScript.
set(CMAKE_C_FLAGS_INIT -fwasm-exceptions)
set(CMAKE_CXX_FLAGS_INIT -fwasm-exceptions)
# A long jump anywhere would be an error of linking: with Lua as C++ there is none.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fwasm-exceptions -sSUPPORT_LONGJMP=0")
# emscripten asks for a package of Node.js that lies outside of its own folder.
set(CMAKE_CXX_LINKER_LAUNCHER env NODE_PATH=/usr/share/nodejs)
