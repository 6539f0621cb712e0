#!/usr/bin/env bash
# Runs every test: test.sh [CTEST OPTION ...]
#
# Most tests wait rather than compute, and many have the machine to themselves. So there are two machines, that is two
# Wine prefixes, which run at the same time: one for the 32-bit tests, one for the 64-bit tests and the command line's
# sessions.
#
# A test that fails is run once more, and both runs are in the log: a Wine of this version now and then loses a 32-bit
# thread's segment register, and the program with it. A test that can fail fails twice.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p build/tests
second=$PWD/build/wine/prefix-2

# lane STEP...: runs the steps, each the arguments of one ctest, with a Wine server for all of them.
lane() {
  local status=0 step
  # shellcheck disable=SC1091
  . scripts/wine-env.sh
  wineserver -k 2>/dev/null || true
  wineserver -p  # a start costs more than most tests
  # Wine's own services start with the first program and keep its output open; no test may be that one.
  wine cmd /c exit </dev/null >/dev/null 2>&1
  for step in "$@"; do
    # shellcheck disable=SC2086
    ctest --output-on-failure --repeat until-pass:2 $step "${options[@]}" || status=$?
  done
  wineserver -k || true
  return "$status"
}

options=("$@")
sessions='^(CommandLine|Readme)\.'
if [ ! -f "$second/.made" ]; then
  rm -rf "$second"
  cp -a build/wine/prefix "$second"
fi

KXOVA_PREFIX=$second lane "--test-dir build/x64 -j2" "--test-dir build/x86 -R $sessions" \
  >build/tests/second.log 2>&1 &
other=$!
status=0
lane "--test-dir build/x86 -j2 -E $sessions" || status=$?
wait "$other" || status=$?
cat build/tests/second.log
exit "$status"
