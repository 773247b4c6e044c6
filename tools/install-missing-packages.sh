#!/bin/sh
# Installs the packages of the lists in tools/ that this machine lacks. Needs root, or sudo.
#
#   tools/install-missing-packages.sh [LIST...]       default: packages.txt
set -eu
cd "$(dirname "$0")"
[ $# -gt 0 ] || set -- packages.txt

missing=
for package in $(sed 's/#.*//' "$@"); do
  dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
    missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then as_root=sudo; fi
echo "installing:$missing"
$as_root apt-get update -qq
# shellcheck disable=SC2086 # the names are separate words
$as_root env DEBIAN_FRONTEND=noninteractive \
  apt-get -o DPkg::Lock::Timeout=120 install -qq -y --no-install-recommends $missing >/dev/null
