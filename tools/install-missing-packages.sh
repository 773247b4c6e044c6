#!/bin/sh
# Installs the packages of tools/packages.txt that this machine lacks. Needs root, or sudo.
set -eu

missing=
for package in $(sed 's/#.*//' "$(dirname "$0")/packages.txt"); do
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
  apt-get install -qq -y --no-install-recommends $missing >/dev/null
