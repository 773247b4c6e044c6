#!/bin/sh
# Packs finished builds into build/packages, holds the Debian packages against Debian's rules, and tries
# the desk of each in a clean root.
#
#   tools/build-packages.sh BUILD_DIR...
#
# The same commit gives the same bytes: times are those of the commit.
set -eu
umask 022
tools=$(cd "$(dirname "$0")" && pwd)
packages=$tools/../build/packages
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$tools" log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

rm -rf "$packages"
mkdir -p "$packages"
for build in "$@"; do
  (cd "$build" && cpack -B "$packages" >"$packages/cpack.log") || { cat "$packages/cpack.log"; exit 1; }
done
rm -rf "$packages/_CPack_Packages" "$packages/cpack.log"
lintian --fail-on error,warning "$packages"/*.deb
for package in "$packages"/cusdesk_*.deb; do
  "$tools/try-package.sh" "$package"
done
cd "$packages"
cat ./*.sha256 >SHA256SUMS
rm ./*.sha256
sha256sum -c SHA256SUMS
