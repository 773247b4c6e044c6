#!/bin/sh
# Runs the unit tests of a build under valgrind: run_valgrind.sh BUILD
# Left out: cases that are about speed or a million records, and programs with an allocator of
# their own.
set -eu
slow='-*LittleTime*:*Million*:*LargeJob*'
for program in json_test xml_test module_test table_part_test table_picture_test svg_creator_test \
               host_test plugin_test; do
  valgrind -q --leak-check=full --errors-for-leak-kinds=definite,indirect,possible \
    --error-exitcode=9 "$1/bin/$program" --gtest_filter="$slow" --gtest_brief=1 >/dev/null
  echo "valgrind $program: clean"
done
