#!/bin/sh
# Prints what test runs counted, out of their logs: inputs, executions, faults, cycles, coverage.
#
#   tools/print-figures.sh LOG...
set -eu
echo "what was tried:"
grep -hE '^(reads|downloads|servers|loads|queries|table part|commands|isolation|soak|threads|growth|page): |^replayed |^fuzz(ers,)? |^coverage of |^valgrind ' \
  "$@" | sed 's/^/  /'
