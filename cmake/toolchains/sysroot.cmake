# Builds against a folder that stands for the target's file system, and runs the results under
# qemu-user. The including file says which target (CUS_TRIPLE, CUS_EMULATOR, CUS_ARCHITECTURE).
#
#   CUS_SYSROOT   the folder; default: the one that tools/make-sysroot.sh made for the architecture
#   CUS_SDK_CLANG  compile with clang and take the C++ headers and runtime out of the folder too. A
#                  cross gcc always uses those it came with, which an older target does not have.
set(CMAKE_SYSTEM_NAME Linux)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CUS_SYSROOT CUS_SDK_CLANG)

if(NOT CUS_SYSROOT)
  set(CUS_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroots/${CUS_ARCHITECTURE})
endif()
cmake_path(ABSOLUTE_PATH CUS_SYSROOT NORMALIZE)
set(CMAKE_SYSROOT ${CUS_SYSROOT})

if(CUS_SDK_CLANG)
  set(CMAKE_CXX_COMPILER ${CUS_SDK_CLANG})
  set(CMAKE_CXX_COMPILER_TARGET ${CUS_TRIPLE})
  set(CMAKE_CXX_COMPILER_EXTERNAL_TOOLCHAIN ${CMAKE_SYSROOT}/usr)
else()
  set(CMAKE_CXX_COMPILER ${CUS_TRIPLE}-g++)
endif()
set(CMAKE_STRIP ${CUS_TRIPLE}-strip)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CUS_EMULATOR} -L ${CMAKE_SYSROOT})

# Programs come from this machine, everything else from the target.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
# Debian has a folder per architecture, other makers of SDKs have none.
set(usr ${CMAKE_SYSROOT}/usr)
set(ENV{PKG_CONFIG_LIBDIR} "${usr}/lib/${CUS_TRIPLE}/pkgconfig:${usr}/lib/pkgconfig:\
${usr}/lib64/pkgconfig:${usr}/share/pkgconfig")
unset(usr)
