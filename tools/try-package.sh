#!/bin/sh
# Runs a Debian package of the desk in a root that holds what the package asks for and nothing else.
#
#   tools/try-package.sh PACKAGE.deb
#
# Packages of other architectures run under qemu-user.
set -eu
tools=$(cd "$(dirname "$0")" && pwd)
package=$1
architecture=$(dpkg-deb -f "$package" Architecture)
depends=$(dpkg-deb -f "$package" Depends | sed 's/([^)]*)//g; s/,/ /g')
root=$tools/../build/clean-roots/$architecture

# shellcheck disable=SC2086 # the names are separate words
"$tools/make-sysroot.sh" "$root" "$architecture" bookworm $depends
dpkg-deb -x "$package" "$root"
root=$(cd "$root" && pwd)

case $architecture in
  armhf) emulator="qemu-arm -L $root" ;;
  arm64) emulator="qemu-aarch64 -L $root" ;;
  *)
    libraries=$root/lib/x86_64-linux-gnu:$root/usr/lib/x86_64-linux-gnu
    emulator="$root/lib64/ld-linux-x86-64.so.2 --inhibit-cache --library-path $libraries"
    # The loader would take what the root lacks from this machine.
    strangers=$($emulator --list "$root/usr/bin/cusdesk" | grep '=> ' | grep -v "=> $root") || true
    [ -z "$strangers" ] || { echo "$package does not ask for: $strangers" >&2; exit 1; }
    ;;
esac
share=$root/usr/share/cusdesk/examples
# shellcheck disable=SC2086
env -i $emulator "$root/usr/bin/cusdesk" \
  --plugin "$root/usr/lib/cusdesk/libCustom_LuaParseModule.so" --root "$share" \
  run "$share/demo.lua" >"$root/demo.txt"
grep -q 'errorCode 0' "$root/demo.txt"
echo "$(basename "$package"): the demo runs in a clean root"
