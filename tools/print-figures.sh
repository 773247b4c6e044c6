#!/bin/sh
# Prints what test runs counted, out of their logs: inputs, executions, faults, cycles, coverage.
#
#   tools/print-figures.sh LOG...
set -eu
echo "what was tried:"
grep -hE '^(reads|downloads|loads|queries|table part|commands|soak|threads): |^replayed |^fuzz |^coverage of |^valgrind ' \
  "$@" | sed 's/^/  /'
