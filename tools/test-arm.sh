#!/bin/sh
# Builds and tests for both ARMs, and lets the doctor examine what was built: every result whatever
# the others are. At the end they stand together; the exit status is 1 if one failed.
#
#   tools/test-arm.sh JOBS
set -u
cd "$(dirname "$0")/.." || exit 1
jobs=$1
status=0
results=

try() {
  name=$1
  shift
  result=passed
  "$@" || { result=FAILED; status=1; }
  results="$results
  $name: $result"
  [ $result = passed ]
}

for target in armhf arm64; do
  try "$target build" make "$target" JOBS="$jobs" || continue
  try "$target tests" ctest --preset "$target" -j"$jobs"
  try "$target doctor" build/cusdesk doctor --against "build/sysroots/$target" \
    --host "build/$target/cusdesk" "build/$target/libCustom_LuaParseModule.so"
done
echo "on ARM:$results"
exit $status
