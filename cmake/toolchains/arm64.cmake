# 64-bit ARM, by Debian's cross compiler.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CUS_TRIPLE aarch64-linux-gnu)
set(CUS_EMULATOR qemu-aarch64)
set(CUS_ARCHITECTURE arm64)
include(${CMAKE_CURRENT_LIST_DIR}/sysroot.cmake)
