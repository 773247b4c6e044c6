#!/bin/sh
# Installs what the browser test needs: Chromium, Node.js and the packages of its lock file. Needs
# root, or sudo, for the first two where they are missing.
set -eu

missing=
command -v chromium >/dev/null || missing=chromium
command -v npm >/dev/null || missing="$missing nodejs npm"
if [ -n "$missing" ]; then
  as_root=
  if [ "$(id -u)" -ne 0 ]; then as_root=sudo; fi
  echo "installing: $missing"
  $as_root apt-get update -qq
  # shellcheck disable=SC2086 # the names are separate words
  $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -qq -y --no-install-recommends $missing >/dev/null
fi

npm ci --prefix "$(dirname "$0")/../tests/desk/panel" --no-audit --no-fund
