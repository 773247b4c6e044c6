#!/bin/sh
# Runs browser_test.mjs where it can: browser_test.sh CUSDESK. Exit status 77 where it cannot, unless
# CUS_BROWSER_TEST=required says that this is a failure.
cd "$(dirname "$0")" || exit 1

skip() {
  echo "browser test skipped: $1 (tools/install-browser-test.sh installs it)"
  [ "${CUS_BROWSER_TEST-}" = required ] && exit 1
  exit 77
}

command -v node >/dev/null || skip "no Node.js"
[ -x /usr/bin/chromium ] || skip "no Chromium"
for package in playwright-core axe-core; do
  [ -d node_modules/$package ] || skip "no $package"
done
exec node browser_test.mjs "$1"
