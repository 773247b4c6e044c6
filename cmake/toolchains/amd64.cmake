# 64-bit PCs, for a file system older than this machine's: names it with CUS_SYSROOT.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CUS_TRIPLE x86_64-linux-gnu)
set(CUS_EMULATOR qemu-x86_64)
set(CUS_ARCHITECTURE amd64)
include(${CMAKE_CURRENT_LIST_DIR}/sysroot.cmake)
