#!/usr/bin/env bash
# Runs every test: test.sh [CTEST OPTION ...]
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck disable=SC1091
. scripts/wine-env.sh
wineserver -p  # one Wine server for the whole run: a start costs more than most tests
trap 'wineserver -k || true' EXIT
for preset in x86 x64; do
  echo "== tests of $preset"
  ctest --test-dir "build/$preset" --output-on-failure -j"$(nproc)" "$@"
done
