#!/bin/sh
# Builds the plug-in and the host of examples/host for old Debians and all architectures, and runs them
# under emulators, with Lua built as C and as C++. Prints the table of docs/integrating.md.
#
#   tools/try-userlands.sh [JOBS]
#
# A row says whether the host showed its table, and who caught the exception for a short file name.
set -eu
cd "$(dirname "$0")/.."
jobs=${1:-$(nproc)}
work=build/userlands
mkdir -p "$work"
cat >"$work/short_name.lua" <<'LUA'
print("pcall", pcall(require("cus_ParseModule").getjson_Flash, "a.js"))
return {}
LUA

# version_of ROOT LIBRARY: the version in the name of its file
version_of() {
  real=$(find "$1" -name "$2.so.*[0-9]" -type f | sort | tail -n 1)
  echo "$real" | sed 's/.*\.so\.//'
}

# build SUITE ARCHITECTURE GCC: the plug-in
build() {
  root=$work/root-$1-$2
  # shellcheck disable=SC2046 # the names are separate words
  tools/make-sysroot.sh "$root" "$2" "$1" $(sed 's/#.*//' tools/sysroot-packages-host.txt) \
    "libstdc++-$3-dev" >&2
  cmake -G Ninja -B "$work/$1-$2" \
    -DCMAKE_TOOLCHAIN_FILE="cmake/toolchains/$2.cmake" -DCMAKE_BUILD_TYPE=Release \
    -DCUS_SYSROOT="$root" -DCUS_SDK_CLANG=clang++-14 -DCUS_BUILD_DESK=OFF -DCUS_BUILD_TESTS=OFF >&2
  cmake --build "$work/$1-$2" -j "$jobs" >&2
}

# host SUITE ARCHITECTURE TRIPLE LUA
host() {
  root=$(realpath "$work/root-$1-$2")
  clang++-14 --target="$3" --sysroot="$root" --gcc-toolchain="$root/usr" -std=c++11 -O1 -I . \
    -isystem "$root/usr/include/jsoncpp" -isystem "$root/usr/include/lua5.3" examples/host/*.cpp \
    -o "$work/$1-$2/host-$4" -rdynamic -l"$4" -ljsoncpp -ltinyxml2 -ldl
}

# row SUITE ARCHITECTURE TRIPLE EMULATOR LUA WORD
row() {
  root=$(realpath "$work/root-$1-$2")
  # Else the loader for PCs would go by this machine's list of libraries.
  libraries=$root/lib/$3:$root/usr/lib/$3
  run="$4 -L $root -E LD_LIBRARY_PATH=$libraries $work/$1-$2/host-$5 $work/$1-$2/libCustom_LuaParseModule.so examples"
  shown=no
  # shellcheck disable=SC2086 # the words are separate
  if $run 2>/dev/null | grep -q '>806.0</text>'; then shown=yes; fi
  # shellcheck disable=SC2086
  said=$($run "$work/short_name.lua" 2>/dev/null) && ended=no || ended=yes
  case $said in
    *'pcall	false'*) caught='`pcall`' ;;
    *'basic_string::substr'*) caught='the host' ;;
    *) caught='nobody' ;;
  esac
  [ $ended = no ] || caught='nobody: the process ends'
  libc=$(find "$root" -name 'libc.so.6' | head -n 1)
  libc=$(strings "$(realpath "$libc")" | sed -n 's/^GNU C Library.* version \([0-9.]*[0-9]\).*/\1/p' | head -n 1)
  echo "| $1 | $2 | $libc | $(version_of "$root" 'libstdc++') | $(version_of "$root" libjsoncpp) |" \
    "$(version_of "$root" libtinyxml2) | $6 | $shown | $caught |"
}

echo '| Debian | Architecture | C library | C++ runtime | jsoncpp | tinyxml2 | Lua as | table shown | exception caught by |'
echo '|---|---|---|---|---|---|---|---|---|'
for userland in bullseye:10 bookworm:12; do
  suite=${userland%:*}
  for target in amd64:x86_64-linux-gnu:qemu-x86_64 arm64:aarch64-linux-gnu:qemu-aarch64 \
    armhf:arm-linux-gnueabihf:qemu-arm; do
    architecture=${target%%:*} rest=${target#*:}
    triple=${rest%:*} emulator=${rest#*:}
    build "$suite" "$architecture" "${userland#*:}"
    for lua in lua5.3:C lua5.3-c++:C++; do
      host "$suite" "$architecture" "$triple" "${lua%:*}"
      row "$suite" "$architecture" "$triple" "$emulator" "${lua%:*}" "${lua#*:}"
    done
  done
done
