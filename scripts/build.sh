#!/usr/bin/env bash
# Configures what is not configured yet and builds both bitnesses.
set -euo pipefail
cd "$(dirname "$0")/.."
for preset in x86 x64; do
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"build/$preset-configure.log" 2>&1 || {
    tail -30 "build/$preset-configure.log" >&2; exit 1; }
  cmake --build --preset "$preset"
done
