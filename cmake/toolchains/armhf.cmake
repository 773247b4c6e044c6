# 32-bit ARM with hardware floating point, by Debian's cross compiler.
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CUS_TRIPLE arm-linux-gnueabihf)
set(CUS_EMULATOR qemu-arm)
set(CUS_ARCHITECTURE armhf)
include(${CMAKE_CURRENT_LIST_DIR}/sysroot.cmake)
