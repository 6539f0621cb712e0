#!/usr/bin/env bash
# Runs every test: test.sh [CTEST OPTION ...]
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck disable=SC1091
. scripts/wine-env.sh
wineserver -k 2>/dev/null || true
wineserver -p  # one Wine server for the whole run: a start costs more than most tests
trap 'wineserver -k || true' EXIT
# Wine's own services start with the first program and keep its output open; no test may be that one.
wine cmd /c exit </dev/null >/dev/null 2>&1

status=0
for preset in x86 x64; do
  echo "== tests of $preset"
  ctest --test-dir "build/$preset" --output-on-failure -j"$(nproc)" "$@" || status=$?
done
exit "$status"
