#!/bin/sh
# Puts the figures of test runs, out of their logs, into the last section of docs/robustness.md.
#
#   tools/write-figures.sh LOG...
set -eu
page=docs/robustness.md
kept=$(sed '/^## Figures$/q' "$page")
{
  printf '%s\n\nMade by `make robustness` on %s with %s processors.\n\n```\n' "$kept" "$(uname -m)" "$(nproc)"
  tools/print-figures.sh "$@" | sed '1d; s/^  //' | sort -u
  echo '```'
} >"$page.new"
mv "$page.new" "$page"
